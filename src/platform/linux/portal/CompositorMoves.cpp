#include "CompositorMoves.h"

#include "X11EventConnection.h"

#include <QCoreApplication>
#include <QWindow>

#include <xcb/xinput.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace lucentra {

namespace {

/// How long a step of the move may take, in milliseconds: after the pointer or a key was taken, and after a change of
/// the window was maximized, also in one direction.
constexpr int grabPatience = 3000;
constexpr int statePatience = 600;

} // namespace

CompositorMoves::CompositorMoves()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    m_state = x11Atom(m_connection.get(), "_NET_WM_STATE");
    m_maximized[0] = x11Atom(m_connection.get(), "_NET_WM_STATE_MAXIMIZED_VERT");
    m_maximized[1] = x11Atom(m_connection.get(), "_NET_WM_STATE_MAXIMIZED_HORZ");
    m_patience.setSingleShot(true);
    m_patience.callOnTimeout([this] { m_handler(false); });
}

void CompositorMoves::watch(const QWindow &window, std::function<void(bool)> handler)
{
    m_window = xcb_window_t(window.winId());
    m_handler = std::move(handler);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

void CompositorMoves::begin(int patience)
{
    const bool isNew = !m_patience.isActive();
    m_patience.start(patience);
    if (isNew)
        m_handler(true);
}

void CompositorMoves::end()
{
    if (!m_patience.isActive())
        return;
    m_patience.stop();
    m_handler(false);
}

bool CompositorMoves::isMaximized() const
{
    constexpr quint32 enough = 32;
    const auto cookie = xcb_get_property(m_connection.get(), false, m_window, m_state, XCB_ATOM_ATOM, 0, enough);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    const auto states = x11PropertyValues(reply.get());
    return std::find_first_of(states.begin(), states.end(), std::begin(m_maximized), std::end(m_maximized)) != states.end();
}

bool CompositorMoves::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto &event = *static_cast<const xcb_generic_event_t *>(message);
    switch (x11EventType(event)) {
    case XCB_GE_GENERIC: {
        // The toolkit selects enter and leave events of the Input Extension alone.
        const auto &crossing = x11Event<xcb_input_enter_event_t>(event);
        if (crossing.event_type == XCB_INPUT_LEAVE && crossing.event == m_window && crossing.mode == XCB_NOTIFY_MODE_NORMAL)
            begin(grabPatience);
        else if (crossing.event_type == XCB_INPUT_ENTER && crossing.event == m_window)
            end();
        break;
    }
    case XCB_KEY_PRESS:
        if (x11Event<xcb_key_press_event_t>(event).event == m_window)
            begin(grabPatience);
        break;
    case XCB_KEY_RELEASE:
        if (x11Event<xcb_key_press_event_t>(event).event == m_window)
            end();
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto &property = x11Event<xcb_property_notify_event_t>(event);
        if (property.window != m_window || property.atom != m_state)
            break;
        const bool isMaximizedNow = isMaximized();
        if (std::exchange(m_wasMaximized, isMaximizedNow) != isMaximizedNow && !m_patience.isActive())
            begin(statePatience);
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
        if (x11Event<xcb_configure_notify_event_t>(event).window == m_window && m_patience.isActive())
            m_patience.start(m_patience.interval());
        break;
    default:
        break;
    }
    return false;
}

} // namespace lucentra
