#include "CommandLineProgram.h"
#include "PaneAtStart.h"
#include "PaneProgram.h"

#include <string_view>

#include <fcntl.h>

namespace {

/// A standard stream that was closed by whoever started us is taken by a file that nothing can be written to; the
/// number would otherwise go to the next file or connection, and the answer into it.
void occupyClosedStreams()
{
    for (int stream = 0; stream <= 2; ++stream) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", O_RDONLY);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    occupyClosedStreams();
    using namespace lucentra;
    if (argc == 1)
        return runPane(argc, argv, PaneAtStart::Shown);
    if (argc == 2 && std::string_view(argv[1]) == waitForCommandOption)
        return runPane(argc, argv, PaneAtStart::WaitsForCommand);
    return runCommandLine(argc, argv);
}
