#pragma once

#include "CompositingMonitor.h"
#include "X11Connection.h"

#include <QSocketNotifier>

#include <memory>

namespace lucentra {

/// A compositor is known by the selection that it owns; a connection of its own to $DISPLAY watches it.
class X11CompositingMonitor : public CompositingMonitor
{
public:
    X11CompositingMonitor();
    ~X11CompositingMonitor() override;

    bool isComposited() const override { return m_isComposited; }
    void setChangeHandler(std::function<void(bool)> changed) override { m_changed = std::move(changed); }

private:
    void readEvents();

    X11Connection m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    quint8 m_selectionEvent = 0;
    bool m_isComposited = false;
    std::function<void(bool)> m_changed;
};

} // namespace lucentra
