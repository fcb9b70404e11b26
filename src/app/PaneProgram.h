#pragma once

namespace lucentra {

/// Runs the program with its pane until the user quits it; returns the exit code.
int runPane(int argc, char *argv[]);

} // namespace lucentra
