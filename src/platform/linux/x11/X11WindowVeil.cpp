#include "X11WindowVeil.h"

#include <QLoggingCategory>

#include <poll.h>

namespace lucentra {

namespace {

Q_LOGGING_CATEGORY(veilCategory, "lucentra.capture", QtInfoMsg)

// Of 0xffffffff: no eye sees it, but compositors draw it, so that a change from one to the other is always a new frame.
constexpr quint32 hardlyVisible = 0x02020202;
constexpr quint32 invisible = 0x01010101;

/// Waits until the server has handled all requests of a connection.
void synchronize(xcb_connection_t *connection)
{
    const auto reply = x11Ask(connection, xcb_get_input_focus, xcb_get_input_focus_reply);
}

} // namespace

X11WindowVeil::X11WindowVeil(X11ResourceRange ours, const QRect &area)
    : m_connection(xcb_connect(nullptr, &m_screenNumber))
{
    xcb_connection_t *c = m_connection.get();
    if (xcb_connection_has_error(c))
        return;
    m_screen = x11Screen(c, m_screenNumber);
    m_opacity = x11Atom(c, "_NET_WM_WINDOW_OPACITY");
    m_question = x11Atom(c, "_NET_REQUEST_FRAME_EXTENTS");
    for (const X11WindowPlace &place : X11Windows(c, m_screen, ours).viewable()) {
        if (!ours.contains(place.window) || !place.frame.intersects(area))
            continue;
        const auto reply = x11Ask(c, xcb_get_property, xcb_get_property_reply, false, place.window, m_opacity,
                                  XCB_ATOM_CARDINAL, 0, 1);
        const auto values = x11PropertyValues(reply.get());
        m_before.insert(place.window, values.empty() ? std::nullopt : std::optional(values.front()));
    }
    m_begun = std::chrono::steady_clock::now();
    setOpacities(hardlyVisible);
    askManager();
    waitForManager();
    m_since = std::chrono::steady_clock::now();
    setOpacities(invisible);
    xcb_flush(c);
}

X11WindowVeil::~X11WindowVeil()
{
    if (!m_screen)
        return;
    for (auto window = m_before.begin(); window != m_before.end(); ++window)
        setOpacity(window.key(), *window);
    synchronize(m_connection.get());
    const auto passed = std::chrono::steady_clock::now() - m_begun;
    qCDebug(veilCategory) << "pane invisible for"
                          << std::chrono::duration_cast<std::chrono::milliseconds>(passed).count() << "ms";
}

void X11WindowVeil::setOpacity(xcb_window_t window, std::optional<quint32> opacity)
{
    xcb_connection_t *c = m_connection.get();
    if (opacity)
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, m_opacity, XCB_ATOM_CARDINAL, 32, 1, &*opacity);
    else
        xcb_delete_property(c, window, m_opacity);
}

void X11WindowVeil::setOpacities(quint32 opacity)
{
    for (auto window = m_before.begin(); window != m_before.end(); ++window)
        setOpacity(window.key(), opacity);
}

void X11WindowVeil::askManager()
{
    // The manager handles its events in order. It answers this question by a property of the asking window.
    xcb_connection_t *c = m_connection.get();
    const xcb_window_t asking = xcb_generate_id(c);
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, asking, m_screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const xcb_client_message_event_t question{
        .response_type = XCB_CLIENT_MESSAGE, .format = 32, .window = asking, .type = m_question};
    xcb_send_event(c, false, m_screen->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&question));
    xcb_flush(c);
}

void X11WindowVeil::waitForManager()
{
    xcb_connection_t *c = m_connection.get();
    const auto deadline = std::chrono::steady_clock::now() + managerPatience;
    while (!xcb_connection_has_error(c)) {
        if (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) {
            if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY)
                return;
            continue;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd socket{.fd = xcb_get_file_descriptor(c), .events = POLLIN, .revents = 0};
        if (left.count() <= 0 || poll(&socket, 1, int(left.count())) == 0)
            return;
    }
}

X11WindowsLowered::X11WindowsLowered(xcb_window_t pane)
    : m_connection(xcb_connect(nullptr, &m_screenNumber))
    , m_pane(pane)
{
    setAbove(false);
}

X11WindowsLowered::~X11WindowsLowered()
{
    setAbove(true);
}

void X11WindowsLowered::setAbove(bool isAbove)
{
    xcb_connection_t *c = m_connection.get();
    if (xcb_connection_has_error(c))
        return;
    xcb_client_message_event_t message{
        .response_type = XCB_CLIENT_MESSAGE, .format = 32, .window = m_pane, .type = x11Atom(c, "_NET_WM_STATE")};
    message.data.data32[0] = isAbove ? 1 : 0; // add or remove
    message.data.data32[1] = x11Atom(c, "_NET_WM_STATE_ABOVE");
    message.data.data32[3] = 1; // an ordinary program
    xcb_send_event(c, false, x11Screen(c, m_screenNumber)->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    synchronize(c);
}

} // namespace lucentra
