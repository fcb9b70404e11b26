#pragma once

#include <QString>

#include <functional>

namespace lucentra {

/// Takes one line for the log, without a line break; any thread. The program writes it to standard output, the command
/// line to standard error. A line never holds a secret or a file's content. An empty function drops the line.
using DiagnosticLine = std::function<void(const QString &)>;

} // namespace lucentra
