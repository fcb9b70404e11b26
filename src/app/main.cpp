#include "CommandLineProgram.h"

int main(int argc, char *argv[])
{
    return lucentra::runCommandLine(argc, argv);
}
