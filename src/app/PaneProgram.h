#pragma once

#include "PaneAtStart.h"

namespace lucentra {

/// Runs the program with its pane until the user quits it, and returns the exit code. If it runs already, the running
/// program shows its pane instead.
int runPane(int argc, char *argv[], PaneAtStart paneAtStart);

} // namespace lucentra
