#pragma once

#include "CompositingMonitor.h"
#include "X11EventConnection.h"

namespace lucentra {

/// Watches the selection that a compositor owns, on a private connection to $DISPLAY.
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
