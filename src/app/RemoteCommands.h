#pragma once

#include <array>
#include <string>
#include <string_view>

namespace lucentra {

/// The running program's name on the session bus, and that of its interface.
inline constexpr auto remoteName = "com.tarnby.lucentra";
inline constexpr auto remotePath = "/com/tarnby/lucentra";

/// The commands that the running program carries out, as typed.
inline constexpr std::array<std::string_view, 10> remoteCommands{
    "toggle", "show", "hide", "translate", "live on", "live off", "live toggle", "settings", "history", "quit"};

/// The command's method on the session bus, such as "LiveOn" for "live on".
inline std::string remoteMember(std::string_view command)
{
    std::string member;
    bool startsWord = true;
    for (const char letter : command) {
        if (letter != ' ')
            member += startsWord ? char(letter - 'a' + 'A') : letter;
        startsWord = letter == ' ';
    }
    return member;
}

/// Longest wait for a command's answer, in milliseconds. No command itself waits for anything.
inline constexpr int remotePatience = 5000;

/// If this is the only option, the program reports that the running one didn't answer a command.
inline constexpr auto unansweredOption = "--unanswered";

} // namespace lucentra
