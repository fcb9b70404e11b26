#include "CommandLineProgram.h"
#include "PaneProgram.h"

int main(int argc, char *argv[])
{
    return argc > 1 ? lucentra::runCommandLine(argc, argv) : lucentra::runPane(argc, argv);
}
