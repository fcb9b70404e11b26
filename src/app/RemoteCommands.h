#pragma once

#include <array>
#include <string_view>

namespace lucentra {

/// The running program's name on the session bus, and that of its interface.
inline constexpr auto remoteName = "com.tarnby.lucentra";
inline constexpr auto remotePath = "/com/tarnby/lucentra";

/// The commands that the running program carries out, as typed. Each has a method on the session bus of the same name
/// with a capital letter.
inline constexpr std::array<std::string_view, 7> remoteCommands{"toggle",   "show",    "hide", "translate",
                                                                "settings", "history", "quit"};

/// How long a command may take, in milliseconds; none waits for anything.
inline constexpr int remotePatience = 5000;

/// With this option alone the program reports that the running one didn't answer a command.
inline constexpr auto unansweredOption = "--unanswered";

} // namespace lucentra
