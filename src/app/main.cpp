#include "CommandLineProgram.h"
#include "PaneAtStart.h"
#include "PaneProgram.h"

#include <string_view>

int main(int argc, char *argv[])
{
    using namespace lucentra;
    if (argc == 1)
        return runPane(argc, argv, PaneAtStart::Shown);
    if (argc == 2 && std::string_view(argv[1]) == waitForCommandOption)
        return runPane(argc, argv, PaneAtStart::WaitsForCommand);
    return runCommandLine(argc, argv);
}
