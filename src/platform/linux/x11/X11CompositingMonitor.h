#pragma once

#include "CompositingMonitor.h"
#include "X11EventConnection.h"

namespace lucentra {

/// A compositor is known by the selection that it owns; a connection of its own to $DISPLAY watches it.
class X11CompositingMonitor : public CompositingMonitor
{
public:
    X11CompositingMonitor();

    bool isComposited() const override { return m_isComposited; }
    void setChangeHandler(std::function<void(bool)> changed) override { m_changed = std::move(changed); }

private:
    bool m_isComposited = false;
    std::function<void(bool)> m_changed;
    X11EventConnection m_connection;
};

} // namespace lucentra
