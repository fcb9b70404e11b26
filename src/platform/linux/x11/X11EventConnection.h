#pragma once

#include "X11Connection.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace lucentra {

/// The type of an event, without the bit that marks events sent by other clients.
inline int x11EventType(const xcb_generic_event_t &event)
{
    return event.response_type & ~0x80;
}

/// An event as the structure that belongs to its type.
template <typename Event>
const Event &x11Event(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

/// A private connection to $DISPLAY whose events are handled in the event loop of the main thread.
class X11EventConnection
{
public:
    X11EventConnection();

    /// False if there is no server, or if the connection to it broke.
    explicit operator bool() const { return xcb_connection_has_error(m_connection.get()) == 0; }
    xcb_connection_t *get() const { return m_connection.get(); }
    int screenNumber() const { return m_screenNumber; }
    xcb_window_t root() const { return m_root; } ///< none without a server

    /// Calls `handle` for each event, and `handled` after the last one that has arrived. Both may send requests, wait
    /// for replies and destroy the connection.
    void listen(std::function<void(const xcb_generic_event_t &)> handle, std::function<void()> handled = {});
    /// Handles the events that arrived together with a reply: they are in the queue already and don't wake the event
    /// loop. To be called after waiting for a reply outside of `handle` and `handled`.
    void handlePending();

private:
    int m_screenNumber = 0;
    X11Connection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::function<void(const xcb_generic_event_t &)> m_handle;
    std::function<void()> m_handled;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace lucentra
