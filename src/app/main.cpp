#include "CommandLineProgram.h"
#include "PaneAtStart.h"
#include "PaneProgram.h"

#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// A standard stream that was closed by the parent is replaced by a file that can't be written to; the
/// number would otherwise go to the next file or connection, and the answer into it.
void occupyClosedStreams()
{
    for (int stream = 0; stream <= 2; ++stream) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", O_RDONLY);
    }
}

/// Relative folders are to be ignored, and without a home folder the user's own is meant; otherwise files would be left
/// wherever the program was started.
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

/// Keys and what is on the screen are in this process's memory: a core file never gets them, not even where a program
/// takes the cores, to which the limit on their size means nothing.
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
    if (argc == 1)
        return runPane(argc, argv, PaneAtStart::Shown);
    if (argc == 2 && std::string_view(argv[1]) == waitForCommandOption)
        return runPane(argc, argv, PaneAtStart::WaitsForCommand);
    // Nor can other programs of the user look into a command. The pane has to do without: the desktop's portals answer
    // nobody whose process they can't look into.
    prctl(PR_SET_DUMPABLE, 0);
    return runCommandLine(argc, argv);
}
