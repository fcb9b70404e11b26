#pragma once

#include <functional>

namespace lucentra {

/// Watches whether translucent windows are blended with the windows beneath them.
class CompositingMonitor
{
public:
    virtual ~CompositingMonitor() = default;

    virtual bool isComposited() const = 0;
    /// Calls the handler with the new state whenever it changes. Replaces the previous handler.
    virtual void setChangeHandler(std::function<void(bool)> changed) = 0;
};

} // namespace lucentra
