#pragma once

#include "Callback.h"
#include "X11EventConnection.h"

namespace lucentra {

/// Watches whether there is a compositor, which owns a selection, on a private connection to $DISPLAY.
class X11CompositingMonitor
{
public:
    X11CompositingMonitor();

    bool isComposited() const { return m_isComposited; }

    Callback<bool> onChanged;

private:
    bool m_isComposited = false;
    X11EventConnection m_connection;
};

} // namespace lucentra
