#pragma once

#include "PaneAtStart.h"

namespace lucentra {

/// Runs the program with its pane until the user quits it; returns the exit code. Where it runs already, that one's
/// pane is shown instead.
int runPane(int argc, char *argv[], PaneAtStart paneAtStart);

} // namespace lucentra
