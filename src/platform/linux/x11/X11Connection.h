#pragma once

#include "Owned.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace lucentra {

/// Owns a reply of the X server.
template <typename Reply>
using X11Reply = Owned<Reply, std::free>;

/// A private connection to the X server. Closing it frees every resource that was created on it.
using X11Connection = Owned<xcb_connection_t, xcb_disconnect>;

/// The screen with a number that xcb_connect returned. The connection must have no error; it owns the screen.
inline xcb_screen_t *x11Screen(xcb_connection_t *connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0)
        xcb_screen_next(&screens);
    return screens.data;
}

/// Waits for the reply to a request that was sent before; null after an error.
template <typename Reply, typename Cookie>
X11Reply<Reply> x11Await(xcb_connection_t *connection,
                         Reply *(*reply)(xcb_connection_t *, Cookie, xcb_generic_error_t **), Cookie cookie)
{
    return X11Reply<Reply>(reply(connection, cookie, nullptr));
}

/// Sends a request to the X server and waits for its reply, which is null after an error. `reply` is the library's
/// function for replies to this request.
template <typename Cookie, typename Reply, typename... Parameters, typename... Arguments>
X11Reply<Reply> x11Ask(xcb_connection_t *connection, Cookie (*request)(xcb_connection_t *, Parameters...),
                       Reply *(*reply)(xcb_connection_t *, Cookie, xcb_generic_error_t **), Arguments... arguments)
{
    return x11Await(connection, reply, request(connection, static_cast<Parameters>(arguments)...));
}

/// The atom of a name, or XCB_ATOM_NONE if the connection is broken.
inline xcb_atom_t x11Atom(xcb_connection_t *connection, const char *name)
{
    const auto reply =
        x11Ask(connection, xcb_intern_atom, xcb_intern_atom_reply, false, uint16_t(std::strlen(name)), name);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// The 32-bit values of a property. Empty if there is no such property or `reply` is null.
inline std::vector<uint32_t> x11PropertyValues(const xcb_get_property_reply_t *reply)
{
    if (!reply || reply->format != 32)
        return {};
    const auto *values = static_cast<const uint32_t *>(xcb_get_property_value(reply));
    return {values, values + reply->value_len};
}

/// Whether a window fills at least half of another one's width and height. False if either doesn't exist any more.
inline bool x11FillsHalf(xcb_connection_t *connection, xcb_window_t window, xcb_window_t outer)
{
    const auto inside = x11Ask(connection, xcb_get_geometry, xcb_get_geometry_reply, window);
    const auto outside = x11Ask(connection, xcb_get_geometry, xcb_get_geometry_reply, outer);
    return inside && outside && 2 * inside->width >= outside->width && 2 * inside->height >= outside->height;
}

} // namespace lucentra
