#pragma once

namespace lucentra {

/// Whether the pane is there when the program has started.
enum class PaneAtStart {
    Shown,
    WaitsForCommand, ///< hidden until one comes over the bus
};

/// The option with which a sender of a command starts the program.
inline constexpr auto waitForCommandOption = "--wait-for-command";

} // namespace lucentra
