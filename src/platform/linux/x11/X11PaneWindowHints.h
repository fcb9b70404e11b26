#pragma once

#include "PaneWindowHints.h"
#include "X11EventConnection.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb_ewmh.h>

#include <memory>

namespace lucentra {

/// The hints of EWMH as messages to the window manager, on a connection of its own to $DISPLAY. Without a server or a
/// window manager nothing happens.
class X11PaneWindowHints : public PaneWindowHints, private QAbstractNativeEventFilter
{
public:
    X11PaneWindowHints();
    ~X11PaneWindowHints() override;

    /// The window must be mapped: the window manager reads these messages for windows that it manages.
    void apply(const QWindow &window, const PaneWindowPresence &presence) override;
    bool isPointerButtonDown() const override;
    /// Hears of the pointer by raw events of the X Input Extension 2, which come also while a window manager has
    /// grabbed it; of keys by the focus that a grab takes from the window for as long as it lasts.
    void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) override;
    void endDrag(const QWindow &window) override;
    /// Whether keys go to the window. Unlike what the toolkit tells, that doesn't change while somebody has grabbed the
    /// keyboard for a moment.
    bool hasInputFocus(const QWindow &window) const;
    /// Keeps a mapped window above others, as the pane is, or no longer.
    void setAbove(const QWindow &window, bool isAbove);
    /// Gives a mapped window the keys, as a task bar would: at the user's own wish. The toolkit's way is refused by
    /// window managers that guard the focus, since it tells the time of the last key that the toolkit saw, and the
    /// hotkey isn't among those.
    void activate(const QWindow &window);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void handle(const xcb_generic_event_t &event);
    bool isPointerOver(xcb_window_t window) const;
    void changeState(const QWindow &window, bool isSet, xcb_atom_t first, xcb_atom_t second);

    X11EventConnection m_connection;
    /// The atoms of the window manager's hints. Never filled in without a server.
    std::unique_ptr<xcb_ewmh_connection_t, void (*)(xcb_ewmh_connection_t *)> m_hints;
    /// A connection of its own, so that waiting for a reply never leaves an event in the queue.
    std::unique_ptr<X11EventConnection> m_events;
    xcb_window_t m_heldWindow = XCB_WINDOW_NONE; ///< the one whose holds are told
    std::function<void(bool)> m_hold;
};

} // namespace lucentra
