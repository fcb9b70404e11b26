#pragma once

namespace lucentra {

/// Whether the pane is shown when the program has started.
enum class PaneAtStart {
    Shown,
    WaitsForCommand, ///< hidden until a command arrives over the bus
};

/// The option with which the program is started for a command.
inline constexpr auto waitForCommandOption = "--wait-for-command";

/// Runs the program with its pane until the user quits it, and returns the exit code. If it runs already, the running
/// program shows its pane instead.
int runPane(int argc, char *argv[], PaneAtStart paneAtStart);

} // namespace lucentra
