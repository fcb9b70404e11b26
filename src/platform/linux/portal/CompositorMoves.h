#pragma once

#include "X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>

#include <functional>

class QWindow;

namespace lucentra {

/// Finds out when the user may be moving an X11 window by means of a Wayland compositor: by a modifier and the pointer,
/// by keys, or by tiling. The X server reports neither buttons nor keys then, but the compositor takes the pointer or
/// the keys away from the window, or maximizes it, before it moves the window.
class CompositorMoves : private QAbstractNativeEventFilter
{
public:
    CompositorMoves();

    /// Calls the handler when such a move may begin (true), and when it has ended or none has come (false). The window
    /// must be created.
    void watch(const QWindow &window, std::function<void(bool)> handler);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void begin(int patience);
    void end();
    bool isMaximized() const;

    X11Connection m_connection;
    xcb_atom_t m_state = XCB_ATOM_NONE;
    xcb_atom_t m_maximized[2] = {};
    bool m_wasMaximized = false;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::function<void(bool)> m_handler;
    QTimer m_patience;
};

} // namespace lucentra
