#pragma once

namespace lucentra {

/// Whether the pane is shown when the program has started.
enum class PaneAtStart {
    Shown,
    WaitsForCommand, ///< hidden until a command arrives over the bus
};

/// The option with which the program is started for a command.
inline constexpr auto waitForCommandOption = "--wait-for-command";

} // namespace lucentra
