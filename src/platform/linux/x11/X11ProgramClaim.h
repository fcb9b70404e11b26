#pragma once

#include "X11EventConnection.h"

#include <functional>

namespace lucentra {

/// Makes the program the only instance on its display if there is no session bus: the instance owns a selection, and
/// another start asks the owner to show its pane.
class X11ProgramClaim
{
public:
    /// Connects to $DISPLAY and takes the selection if nobody owns it.
    X11ProgramClaim();
    X11ProgramClaim(const X11ProgramClaim &) = delete;
    X11ProgramClaim &operator=(const X11ProgramClaim &) = delete;

    /// Whether another instance owns the selection.
    bool isTaken() const { return m_owner != XCB_WINDOW_NONE; }
    /// Asks that instance to show its pane.
    void askToShow();

    /// Called when another start asks for the pane.
    std::function<void()> onShowAsked;

private:
    X11EventConnection m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE; ///< of the other instance
};

} // namespace lucentra
