#pragma once

#include <QRectF>

#include <functional>

namespace lucentra {

/// Reports changes of what other programs show in an area of the screen.
class ScreenChangeMonitor
{
public:
    virtual ~ScreenChangeMonitor() = default;

    /// Watches an area (global points, origin top-left, y down) in place of the previous one; an empty area ends the
    /// watch and all work for it. `changed` is called once; call `rearm` for the next change.
    virtual void watch(const QRectF &area, std::function<void()> changed) = 0;
    /// Enables the next report.
    virtual void rearm() = 0;
};

} // namespace lucentra
