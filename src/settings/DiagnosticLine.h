#pragma once

#include <QString>

#include <functional>

namespace lucentra {

/// Logs one line, given without a line break. Any thread. The program logs to standard output, its commands to standard
/// error. A line never contains a secret or a file's content. An empty function drops the line.
using DiagnosticLine = std::function<void(const QString &)>;

} // namespace lucentra
