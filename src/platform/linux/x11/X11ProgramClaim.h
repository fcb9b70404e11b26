#pragma once

#include "X11EventConnection.h"

#include <functional>

namespace lucentra {

/// Makes the program the only one on its display, for want of a session bus: by a selection that it owns, whose owner
/// can be asked to show its pane. Main thread only.
class X11ProgramClaim
{
public:
    /// Asks the server of $DISPLAY, and takes what nobody has.
    X11ProgramClaim();
    X11ProgramClaim(const X11ProgramClaim &) = delete;
    X11ProgramClaim &operator=(const X11ProgramClaim &) = delete;

    /// Whether another program had it already.
    bool isTaken() const { return m_owner != XCB_WINDOW_NONE; }
    /// Asks that other program to show its pane.
    void askToShow();

    /// Another start has asked for the pane.
    std::function<void()> onShowAsked;

private:
    X11EventConnection m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE; ///< another program's
};

} // namespace lucentra
