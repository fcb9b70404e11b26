#pragma once

#include "ProgramClaim.h"
#include "X11EventConnection.h"

namespace lucentra {

/// The instance owns a selection on its display; another start sends the owner a message.
class X11ProgramClaim : public ProgramClaim
{
public:
    /// Connects to $DISPLAY and takes the selection if nobody owns it.
    X11ProgramClaim();

    bool isTaken() const override { return m_owner != XCB_WINDOW_NONE; }
    void askToShow() override;

private:
    X11EventConnection m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE; ///< of the other instance
};

} // namespace lucentra
