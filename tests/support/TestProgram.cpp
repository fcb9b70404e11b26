#include "TestProgram.h"

#include <cstdio>
#include <map>
#include <string>

using namespace lucentra;

static std::map<std::string, TestMain> &testClasses()
{
    static std::map<std::string, TestMain> classes;
    return classes;
}

void lucentra::addTestClass(const char *name, TestMain run)
{
    testClasses().emplace(name, run);
}

int main(int argc, char **argv)
{
    const auto found = testClasses().find(argc > 1 ? argv[1] : "");
    if (found == testClasses().end()) {
        std::fprintf(stderr, "The first argument is one of:\n");
        for (const auto &[name, run] : testClasses())
            std::fprintf(stderr, "    %s\n", name.c_str());
        return 1;
    }
    argv[1] = argv[0];
    return found->second(argc - 1, argv + 1);
}
