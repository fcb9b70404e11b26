#pragma once

#include <functional>

namespace lucentra {

/// Knows whether translucent windows are blended with what lies beneath them. Main thread only.
class CompositingMonitor
{
public:
    virtual ~CompositingMonitor() = default;

    virtual bool isComposited() const = 0;
    /// Called with the new state whenever it changes, until the monitor goes. Replaces the handler before it.
    virtual void setChangeHandler(std::function<void(bool)> changed) = 0;
};

} // namespace lucentra
