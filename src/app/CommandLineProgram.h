#pragma once

namespace lucentra {

/// Runs one command of the command line and returns the exit code. Standard output gets the answer alone; messages
/// and diagnostics go to standard error. Neither the history nor the clipboard is touched.
int runCommandLine(int argc, char *argv[]);

} // namespace lucentra
