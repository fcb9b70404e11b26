#include "CommandLineProgram.h"
#include "Memory.h"
#include "PaneProgram.h"

#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// Opens a file that can't be written to in place of each standard stream that the parent closed. Otherwise the next
/// file or connection would get the stream's number, and the answer would be written into it.
void occupyClosedStreams()
{
    for (int stream = 0; stream <= 2; ++stream) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", O_RDONLY);
    }
}

/// Removes relative folders from the environment and sets a missing home folder. Otherwise files would be written into
/// the folder in which the program was started.
void repairFolders()
{
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        const char *value = std::getenv(name);
        if (value && value[0] != '/')
            unsetenv(name);
    }
    const char *home = std::getenv("HOME");
    const passwd *user = home && home[0] == '/' ? nullptr : getpwuid(getuid());
    if (user && user->pw_dir)
        setenv("HOME", user->pw_dir, 1);
}

/// Keeps keys and captured text, which are in this process's memory, out of core files. A limit on their size wouldn't
/// suffice, since it doesn't apply to programs that receive cores.
void leaveNothingInCoreFiles()
{
    constexpr rlimit nothing{};
    setrlimit(RLIMIT_CORE, &nothing);
    if (const int filter = open("/proc/self/coredump_filter", O_WRONLY | O_CLOEXEC); filter >= 0) {
        [[maybe_unused]] const ssize_t written = write(filter, "0", 1); // none of the memory
        close(filter);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    occupyClosedStreams();
    repairFolders();
    leaveNothingInCoreFiles();
    using namespace lucentra;
    giveBackLargeBlocks();
    // A session manager starts programs again with the name of their former session.
    if (argc == 1 || (argc == 3 && std::string_view(argv[1]) == "-session"))
        return runPane(argc, argv, PaneAtStart::Shown);
    if (argc == 2 && std::string_view(argv[1]) == waitForCommandOption)
        return runPane(argc, argv, PaneAtStart::WaitsForCommand);
    // Other programs of the user can't read a command's memory either. Not for the pane: the desktop's portals refuse
    // processes that they can't inspect.
    prctl(PR_SET_DUMPABLE, 0);
    return runCommandLine(argc, argv);
}
