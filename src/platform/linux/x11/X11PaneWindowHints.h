#pragma once

#include "PaneWindowHints.h"
#include "X11EventConnection.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb_ewmh.h>

#include <memory>

namespace lucentra {

/// EWMH messages to the window manager, on a private connection to $DISPLAY. Does nothing without a server or a window
/// manager.
class X11PaneWindowHints : public PaneWindowHints, private QAbstractNativeEventFilter
{
public:
    X11PaneWindowHints();

    /// The window must be mapped: the window manager only handles these messages for windows that it manages.
    void apply(const QWindow &window, const PaneWindowPresence &presence) override;
    bool isPointerButtonDown() const override;
    /// Uses raw events of the X Input Extension 2, which are reported also while a window manager has grabbed the
    /// pointer, and focus events, since a keyboard grab takes the focus from the window while it lasts.
    void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) override;
    void endDrag(const QWindow &window) override;
    void place(QWidget &window, const QRect &frame) override;
    bool startMove(QWindow &window) override;
    bool startResize(QWindow &window, Qt::Edges edges) override;
    bool hasInputFocus(const QWindow &window) const override;
    void setAbove(const QWindow &window, bool isAbove) override;
    /// Window managers with focus-stealing prevention refuse the toolkit's request, since it carries the time of the
    /// last key that the toolkit saw, and a hotkey isn't one of those.
    void activate(const QWindow &window) override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void handle(const xcb_generic_event_t &event);
    bool isPointerOver(xcb_window_t window) const;
    void changeState(const QWindow &window, bool isSet, xcb_atom_t first, xcb_atom_t second);

    X11EventConnection m_connection;
    /// The atoms of EWMH; filled in if there is a server.
    std::unique_ptr<xcb_ewmh_connection_t, void (*)(xcb_ewmh_connection_t *)> m_hints;
    /// A connection of its own, so that waiting for a reply never leaves an event in the queue.
    std::unique_ptr<X11EventConnection> m_events;
    xcb_window_t m_heldWindow = XCB_WINDOW_NONE; ///< the window of setHoldHandler
    std::function<void(bool)> m_hold;
};

} // namespace lucentra
