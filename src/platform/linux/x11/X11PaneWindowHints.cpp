#include "X11PaneWindowHints.h"

#include <QWindow>

#include <algorithm>
#include <cstring>

namespace lucentra {

namespace {

// Values of the Extended Window Manager Hints.
constexpr quint32 removeState = 0;
constexpr quint32 addState = 1;
constexpr quint32 sourceIsApplication = 1;
constexpr quint32 sourceIsUser = 2;
constexpr quint32 allDesktops = 0xFFFFFFFF;

} // namespace

X11PaneWindowHints::X11PaneWindowHints()
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get()));
    while (screenNumber-- > 0)
        xcb_screen_next(&screens);
    m_root = screens.data->root;
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

bool X11PaneWindowHints::hasInputFocus(const QWindow &window) const
{
    if (!m_root)
        return false;
    const auto cookie = xcb_get_input_focus(m_connection.get());
    X11Reply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
    return focus && focus->focus == xcb_window_t(window.winId());
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
