// The executable that users start. It sends commands to the running program itself, so that a hotkey needn't wait until
// the whole program's libraries are loaded. For everything else it executes the program in its place.

#include "RemoteCommands.h"

#include <dbus/dbus.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

namespace {

using namespace lucentra;

enum class Sent {
    Done,
    Unanswered, ///< the program has received the command, but hangs
    Undone,     ///< the program, which is executed next, finds the reason and reports it, or starts
};

Sent send(const std::string &command)
{
    DBusError error;
    dbus_error_init(&error);
    DBusConnection *bus = dbus_bus_get(DBUS_BUS_SESSION, &error);
    if (!bus)
        return Sent::Undone;
    dbus_connection_set_exit_on_disconnect(bus, false);
    DBusMessage *call =
        dbus_message_new_method_call(remoteName, remotePath, remoteName, remoteMember(command).c_str());
    if (!call)
        return Sent::Undone;
    dbus_message_set_auto_start(call, false);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(remotePatience);
    if (dbus_connection_send_with_reply_and_block(bus, call, remotePatience, &error))
        return Sent::Done;
    // The bus gives the same error if the program ends before it answers.
    const bool isLate = std::chrono::steady_clock::now() >= deadline;
    return isLate && dbus_error_has_name(&error, DBUS_ERROR_NO_REPLY) ? Sent::Unanswered : Sent::Undone;
}

/// The program's path, relative to this executable.
std::string programPath()
{
    std::array<char, PATH_MAX> own{};
    const ssize_t length = readlink("/proc/self/exe", own.data(), own.size());
    std::string path(own.data(), std::size_t(std::max<ssize_t>(length, 0)));
    for (int levels = 0; levels < 2; ++levels)
        path.resize(std::min(path.rfind('/'), path.size()));
    return path + "/libexec/lucentra-program";
}

} // namespace

int main(int argc, char *argv[])
{
    const std::string command =
        argc == 2 ? argv[1] : argc == 3 ? std::string(argv[1]) + ' ' + argv[2] : std::string();
    if (std::find(remoteCommands.begin(), remoteCommands.end(), command) != remoteCommands.end()) {
        const Sent sent = send(command);
        if (sent == Sent::Done)
            return 0;
        if (sent == Sent::Unanswered) {
            argv[1] = const_cast<char *>(unansweredOption);
            argv[2] = nullptr;
        }
    }
    const std::string program = programPath();
    execv(program.c_str(), argv);
    std::fprintf(stderr, "lucentra: %s: %s\n", program.c_str(), std::strerror(errno));
    return 2;
}
