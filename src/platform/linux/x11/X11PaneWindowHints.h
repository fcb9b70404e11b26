#pragma once

#include "PaneWindowHints.h"
#include "X11Connection.h"

#include <QtGlobal>

#include <initializer_list>

namespace lucentra {

/// The hints of EWMH as messages to the window manager, on a connection of its own to $DISPLAY. Without a server or a
/// window manager nothing happens.
class X11PaneWindowHints : public PaneWindowHints
{
public:
    X11PaneWindowHints();
    ~X11PaneWindowHints() override;

    /// The window must be mapped: the window manager reads these messages for windows that it manages.
    void apply(const QWindow &window, const PaneWindowPresence &presence) override;
    bool isPointerButtonDown() const override;
    /// Whether keys go to the window. Unlike what the toolkit tells, that doesn't change while somebody has grabbed the
    /// keyboard for a moment.
    bool hasInputFocus(const QWindow &window) const;
    /// Gives a mapped window the keys, as a task bar would: at the user's own wish. The toolkit's way is refused by
    /// window managers that guard the focus, since it tells the time of the last key that the toolkit saw, and the
    /// hotkey isn't among those.
    void activate(const QWindow &window);

private:
    xcb_atom_t atom(const char *name) const;
    void tellWindowManager(xcb_window_t window, xcb_atom_t message, std::initializer_list<quint32> values) const;

    X11Connection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace lucentra
