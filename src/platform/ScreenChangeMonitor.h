#pragma once

#include <QRectF>

#include <functional>

namespace lucentra {

/// Tells when what other programs show on a part of the screen may have changed. Main thread only.
class ScreenChangeMonitor
{
public:
    virtual ~ScreenChangeMonitor() = default;

    /// Watches an area (global points, origin top-left) instead of the one before; an empty one ends the watch, and
    /// with it all work. `changed` runs on the main thread, once; call `rearm` for the next change.
    virtual void watch(const QRectF &area, std::function<void()> changed) = 0;
    /// Asks for the next change after one was reported and dealt with.
    virtual void rearm() = 0;
};

} // namespace lucentra
