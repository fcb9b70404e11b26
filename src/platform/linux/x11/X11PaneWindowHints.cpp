#include "X11PaneWindowHints.h"

#include <QCoreApplication>
#include <QWidget>
#include <QWindow>

#include <xcb/xinput.h>

#include <utility>

namespace lucentra {

namespace {

constexpr quint32 allDesktops = 0xFFFFFFFF; // the value of the window manager's hints

void freeHints(xcb_ewmh_connection_t *hints)
{
    xcb_ewmh_connection_wipe(hints);
    delete hints;
}

xcb_window_t idOf(const QWindow &window)
{
    return xcb_window_t(window.winId());
}

} // namespace

X11PaneWindowHints::X11PaneWindowHints()
    : m_hints(new xcb_ewmh_connection_t{}, &freeHints)
{
    if (m_connection)
        xcb_ewmh_init_atoms_replies(m_hints.get(), xcb_ewmh_init_atoms(m_connection.get(), m_hints.get()), nullptr);
}

void X11PaneWindowHints::changeState(const QWindow &window, bool isSet, xcb_atom_t first, xcb_atom_t second)
{
    xcb_ewmh_request_change_wm_state(m_hints.get(), m_connection.screenNumber(), idOf(window),
                                     isSet ? XCB_EWMH_WM_STATE_ADD : XCB_EWMH_WM_STATE_REMOVE, first, second,
                                     XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(m_connection.get());
}

void X11PaneWindowHints::apply(const QWindow &window, const PaneWindowPresence &presence)
{
    if (!m_connection)
        return;
    changeState(window, true, m_hints->_NET_WM_STATE_ABOVE, XCB_ATOM_NONE);
    changeState(window, !presence.isListed, m_hints->_NET_WM_STATE_SKIP_TASKBAR, m_hints->_NET_WM_STATE_SKIP_PAGER);
    xcb_ewmh_request_change_wm_desktop(m_hints.get(), m_connection.screenNumber(), idOf(window), allDesktops,
                                       XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(m_connection.get());
}

bool X11PaneWindowHints::isPointerButtonDown() const
{
    if (!m_connection)
        return false;
    const auto pointer = x11Ask(m_connection.get(), xcb_query_pointer, xcb_query_pointer_reply, m_connection.root());
    constexpr quint16 buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return pointer && (pointer->mask & buttons);
}

void X11PaneWindowHints::setHoldHandler(const QWindow &window, std::function<void(bool)> handler)
{
    m_heldWindow = idOf(window);
    const bool isNew = !std::exchange(m_hold, std::move(handler));
    if (!isNew || !m_connection)
        return;
    m_events = std::make_unique<X11EventConnection>();
    if (!*m_events)
        return;
    xcb_connection_t *c = m_events->get();
    QCoreApplication::instance()->installNativeEventFilter(this);
    // Since version 2.1, raw events come also during grabs.
    if (!x11Ask(c, xcb_input_xi_query_version, xcb_input_xi_query_version_reply, 2, 1))
        return;
    const struct
    {
        xcb_input_event_mask_t head{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1};
        quint32 events = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    } mask;
    xcb_input_xi_select_events(c, m_events->root(), 1, &mask.head);
    m_events->listen([this](const xcb_generic_event_t &event) { handle(event); });
}

void X11PaneWindowHints::handle(const xcb_generic_event_t &event)
{
    if (x11EventType(event) != XCB_GE_GENERIC)
        return;
    // The Input Extension is the only one that is asked for such events.
    const auto type = x11Event<xcb_ge_generic_event_t>(event).event_type;
    if (type == XCB_INPUT_RAW_BUTTON_PRESS && isPointerOver(m_heldWindow))
        m_hold(true);
    else if (type == XCB_INPUT_RAW_BUTTON_RELEASE && !isPointerButtonDown())
        m_hold(false);
}

bool X11PaneWindowHints::isPointerOver(xcb_window_t window) const
{
    xcb_connection_t *c = m_connection.get();
    const auto pointer = x11Ask(c, xcb_query_pointer, xcb_query_pointer_reply, window);
    const auto size = x11Ask(c, xcb_get_geometry, xcb_get_geometry_reply, window);
    return pointer && size && pointer->same_screen && pointer->win_x >= 0 && pointer->win_y >= 0 &&
           pointer->win_x < size->width && pointer->win_y < size->height;
}

bool X11PaneWindowHints::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto &event = *static_cast<const xcb_generic_event_t *>(message);
    const int type = x11EventType(event);
    if (type != XCB_FOCUS_OUT && type != XCB_FOCUS_IN)
        return false;
    const auto &focus = x11Event<xcb_focus_in_event_t>(event);
    if (focus.event != m_heldWindow)
        return false;
    if (type == XCB_FOCUS_OUT && focus.mode == XCB_NOTIFY_MODE_GRAB)
        m_hold(true);
    else if (type == XCB_FOCUS_IN && focus.mode == XCB_NOTIFY_MODE_UNGRAB)
        m_hold(false);
    return false;
}

void X11PaneWindowHints::endDrag(const QWindow &window)
{
    if (!m_connection)
        return;
    xcb_ewmh_request_wm_moveresize(m_hints.get(), m_connection.screenNumber(), idOf(window), 0, 0,
                                   XCB_EWMH_WM_MOVERESIZE_CANCEL, XCB_BUTTON_INDEX_ANY,
                                   XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(m_connection.get());
}

void X11PaneWindowHints::place(QWidget &window, const QRect &frame)
{
    window.setGeometry(frame);
}

bool X11PaneWindowHints::startMove(QWindow &window)
{
    return window.startSystemMove();
}

bool X11PaneWindowHints::startResize(QWindow &window, Qt::Edges edges)
{
    return window.startSystemResize(edges);
}

bool X11PaneWindowHints::hasInputFocus(const QWindow &window) const
{
    if (!m_connection)
        return false;
    const auto focus = x11Ask(m_connection.get(), xcb_get_input_focus, xcb_get_input_focus_reply);
    return focus && focus->focus == xcb_window_t(window.winId());
}

void X11PaneWindowHints::setAbove(const QWindow &window, bool isAbove)
{
    if (m_connection)
        changeState(window, isAbove, m_hints->_NET_WM_STATE_ABOVE, XCB_ATOM_NONE);
}

void X11PaneWindowHints::activate(const QWindow &window)
{
    if (!m_connection)
        return;
    xcb_ewmh_request_change_active_window(m_hints.get(), m_connection.screenNumber(), idOf(window),
                                          XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, XCB_CURRENT_TIME, XCB_WINDOW_NONE);
    xcb_flush(m_connection.get());
}

} // namespace lucentra
