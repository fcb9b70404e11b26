#pragma once

namespace lucentra {

/// Whether the pane is there when the program has started.
enum class PaneAtStart {
    Shown,
    WaitsForCommand, ///< hidden until one comes over the bus
};

/// The option that starts the program for whoever sends a command at once.
inline constexpr auto waitForCommandOption = "--wait-for-command";

} // namespace lucentra
