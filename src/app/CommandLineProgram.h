#pragma once

#include "ServiceHosts.h"

namespace lucentra {

/// Runs one command of the command line and returns the exit code. Standard output gets the answer alone; messages
/// and diagnostics go to standard error. Neither the history nor the clipboard is touched.
/// `hosts` are the services' own but for tests.
int runCommandLine(int argc, char *argv[], const ServiceHosts &hosts = {});

} // namespace lucentra
