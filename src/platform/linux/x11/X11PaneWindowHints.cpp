#include "X11PaneWindowHints.h"

#include <QCoreApplication>
#include <QWindow>

#include <xcb/xinput.h>

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

// Values of the Extended Window Manager Hints.
constexpr quint32 removeState = 0;
constexpr quint32 addState = 1;
constexpr quint32 sourceIsApplication = 1;
constexpr quint32 sourceIsUser = 2;
constexpr quint32 allDesktops = 0xFFFFFFFF;
constexpr quint32 cancelMoveResize = 11;

} // namespace

X11PaneWindowHints::X11PaneWindowHints()
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    m_root = x11Screen(m_connection.get(), screenNumber)->root;
}

X11PaneWindowHints::~X11PaneWindowHints() = default;

void X11PaneWindowHints::apply(const QWindow &window, const PaneWindowPresence &presence)
{
    if (!m_root)
        return;
    const auto id = xcb_window_t(window.winId());
    const xcb_atom_t state = atom("_NET_WM_STATE");
    tellWindowManager(id, state, {addState, atom("_NET_WM_STATE_ABOVE"), 0, sourceIsApplication});
    tellWindowManager(id, state,
                      {presence.isListed ? removeState : addState, atom("_NET_WM_STATE_SKIP_TASKBAR"),
                       atom("_NET_WM_STATE_SKIP_PAGER"), sourceIsApplication});
    tellWindowManager(id, atom("_NET_WM_DESKTOP"), {allDesktops, sourceIsApplication});
    xcb_flush(m_connection.get());
}

bool X11PaneWindowHints::isPointerButtonDown() const
{
    if (!m_root)
        return false;
    const auto cookie = xcb_query_pointer(m_connection.get(), m_root);
    X11Reply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(m_connection.get(), cookie, nullptr));
    constexpr quint16 buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return pointer && (pointer->mask & buttons);
}

void X11PaneWindowHints::setHoldHandler(const QWindow &window, std::function<void(bool)> handler)
{
    m_heldWindow = xcb_window_t(window.winId());
    const bool isNew = !std::exchange(m_hold, std::move(handler));
    if (!isNew || !m_root)
        return;
    m_events.reset(xcb_connect(nullptr, nullptr));
    xcb_connection_t *c = m_events.get();
    if (xcb_connection_has_error(c))
        return;
    QCoreApplication::instance()->installNativeEventFilter(this);
    const auto cookie = xcb_input_xi_query_version(c, 2, 1); // since when raw events come also during grabs
    const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(c, cookie, nullptr));
    if (!version)
        return;
    const struct
    {
        xcb_input_event_mask_t head{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1};
        quint32 events = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    } mask;
    xcb_input_xi_select_events(c, m_root, 1, &mask.head);
    xcb_flush(c);
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
}

void X11PaneWindowHints::readEvents()
{
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_events.get())}) {
        if ((event->response_type & 0x7f) != XCB_GE_GENERIC)
            continue;
        // The only extension that is asked for such events.
        const auto type = reinterpret_cast<const xcb_ge_generic_event_t *>(event.get())->event_type;
        if (type == XCB_INPUT_RAW_BUTTON_PRESS && isPointerOver(m_heldWindow))
            m_hold(true);
        else if (type == XCB_INPUT_RAW_BUTTON_RELEASE && !isPointerButtonDown())
            m_hold(false);
    }
    if (xcb_connection_has_error(m_events.get()))
        m_notifier->setEnabled(false);
}

bool X11PaneWindowHints::isPointerOver(xcb_window_t window) const
{
    xcb_connection_t *c = m_connection.get();
    const auto pointerCookie = xcb_query_pointer(c, window);
    const auto sizeCookie = xcb_get_geometry(c, window);
    const X11Reply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(c, pointerCookie, nullptr));
    const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(c, sizeCookie, nullptr));
    return pointer && size && pointer->same_screen && pointer->win_x >= 0 && pointer->win_y >= 0 &&
           pointer->win_x < size->width && pointer->win_y < size->height;
}

bool X11PaneWindowHints::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & 0x7f;
    if (type != XCB_FOCUS_OUT && type != XCB_FOCUS_IN)
        return false;
    const auto *focus = reinterpret_cast<const xcb_focus_in_event_t *>(event);
    if (focus->event != m_heldWindow)
        return false;
    if (type == XCB_FOCUS_OUT && focus->mode == XCB_NOTIFY_MODE_GRAB)
        m_hold(true);
    else if (type == XCB_FOCUS_IN && focus->mode == XCB_NOTIFY_MODE_UNGRAB)
        m_hold(false);
    return false;
}

void X11PaneWindowHints::endDrag(const QWindow &window)
{
    if (!m_root)
        return;
    tellWindowManager(xcb_window_t(window.winId()), atom("_NET_WM_MOVERESIZE"),
                      {0, 0, cancelMoveResize, 0, sourceIsApplication});
    xcb_flush(m_connection.get());
}

bool X11PaneWindowHints::hasInputFocus(const QWindow &window) const
{
    if (!m_root)
        return false;
    const auto cookie = xcb_get_input_focus(m_connection.get());
    X11Reply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
    return focus && focus->focus == xcb_window_t(window.winId());
}

void X11PaneWindowHints::setAbove(const QWindow &window, bool isAbove)
{
    if (!m_root)
        return;
    tellWindowManager(xcb_window_t(window.winId()), atom("_NET_WM_STATE"),
                      {isAbove ? addState : removeState, atom("_NET_WM_STATE_ABOVE"), 0, sourceIsApplication});
    xcb_flush(m_connection.get());
}

void X11PaneWindowHints::activate(const QWindow &window)
{
    if (!m_root)
        return;
    tellWindowManager(xcb_window_t(window.winId()), atom("_NET_ACTIVE_WINDOW"), {sourceIsUser, XCB_CURRENT_TIME});
    xcb_flush(m_connection.get());
}

xcb_atom_t X11PaneWindowHints::atom(const char *name) const
{
    return x11Atom(m_connection.get(), name);
}

void X11PaneWindowHints::tellWindowManager(xcb_window_t window, xcb_atom_t message,
                                           std::initializer_list<quint32> values) const
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    std::copy(values.begin(), values.end(), event.data.data32);
    xcb_send_event(m_connection.get(), false, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
}

} // namespace lucentra
