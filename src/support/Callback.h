#pragma once

#include <QString>

#include <functional>
#include <utility>

namespace lucentra {

/// A function that its owner may leave empty; calling it does nothing then.
template <typename... Arguments>
class Callback : public std::function<void(Arguments...)>
{
    using Function = std::function<void(Arguments...)>;

public:
    using Function::Function;
    Callback(Function callable)
        : Function(std::move(callable))
    {
    }

    void operator()(Arguments... arguments) const
    {
        if (*this)
            Function::operator()(std::forward<Arguments>(arguments)...);
    }
};

/// Logs one line, given without a line break. Any thread. The program logs to standard output, its commands to standard
/// error. A line never contains a secret or a file's content.
using DiagnosticLine = Callback<const QString &>;

} // namespace lucentra
