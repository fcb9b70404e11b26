#include "X11Windows.h"

#include <xcb/shape.h>

#include <algorithm>
#include <vector>

namespace lucentra {

namespace {

/// Window managers that wrap a client nest it at most this deep below the root.
constexpr int maximumNesting = 8;

} // namespace

X11Windows::X11Windows(xcb_connection_t *connection, const xcb_screen_t *screen, X11ResourceRange ours)
    : m_connection(connection)
    , m_screen(screen)
    , m_ours(ours)
    , m_clientList(x11Atom(connection, "_NET_CLIENT_LIST"))
    , m_opacity(x11Atom(connection, "_NET_WM_WINDOW_OPACITY"))
{
}

QList<xcb_window_t> X11Windows::rootChildren() const
{
    const auto reply = x11Ask(m_connection, xcb_query_tree, xcb_query_tree_reply, m_screen->root);
    if (!reply)
        return {};
    const xcb_window_t *children = xcb_query_tree_children(reply.get());
    return {children, children + reply->children_len};
}

QList<xcb_window_t> X11Windows::managed() const
{
    const auto reply = x11Ask(m_connection, xcb_get_property, xcb_get_property_reply, false, m_screen->root,
                              m_clientList, XCB_ATOM_WINDOW, 0, 65536);
    const auto windows = x11PropertyValues(reply.get());
    return {windows.begin(), windows.end()};
}

QList<X11WindowPlace> X11Windows::viewable() const
{
    xcb_connection_t *c = m_connection;
    QList<xcb_window_t> windows = managed();
    for (const xcb_window_t child : rootChildren()) {
        if (!windows.contains(child))
            windows.append(child);
    }
    struct Pending
    {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t position;
    };
    std::vector<Pending> pending;
    for (const xcb_window_t window : windows)
        pending.push_back({xcb_get_window_attributes(c, window), xcb_get_geometry(c, window),
                           xcb_translate_coordinates(c, window, m_screen->root, 0, 0)});
    QList<X11WindowPlace> places;
    for (size_t i = 0; i < pending.size(); ++i) {
        const auto attributes = x11Await(c, xcb_get_window_attributes_reply, pending[i].attributes);
        const auto geometry = x11Await(c, xcb_get_geometry_reply, pending[i].geometry);
        const auto position = x11Await(c, xcb_translate_coordinates_reply, pending[i].position);
        if (attributes && geometry && position && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            places.append(
                {windows[qsizetype(i)], QRect(position->dst_x, position->dst_y, geometry->width, geometry->height)});
    }
    return places;
}

xcb_window_t X11Windows::rootAncestor(xcb_window_t window) const
{
    for (int depth = 0; depth < maximumNesting; ++depth) {
        const auto reply = x11Ask(m_connection, xcb_query_tree, xcb_query_tree_reply, window);
        if (!reply)
            return XCB_WINDOW_NONE;
        if (reply->parent == m_screen->root)
            return window;
        window = reply->parent;
    }
    return XCB_WINDOW_NONE;
}

QList<xcb_window_t> X11Windows::ourTopLevels(const QList<xcb_window_t> &children) const
{
    xcb_connection_t *c = m_connection;
    QList<xcb_window_t> ours;
    for (const xcb_window_t window : managed()) {
        if (m_ours.contains(window))
            ours.append(rootAncestor(window));
    }
    // A window that was mapped a moment ago may not be listed yet, but its frame already holds it.
    std::vector<xcb_query_tree_cookie_t> cookies;
    for (const xcb_window_t child : children)
        cookies.push_back(xcb_query_tree(c, child));
    for (size_t i = 0; i < cookies.size(); ++i) {
        const auto reply = x11Await(c, xcb_query_tree_reply, cookies[i]);
        const xcb_window_t child = children[qsizetype(i)];
        const xcb_window_t *inner = reply ? xcb_query_tree_children(reply.get()) : nullptr;
        const int count = reply ? reply->children_len : 0;
        if (m_ours.contains(child) || std::any_of(inner, inner + count, [&](xcb_window_t window) {
                // A frame, not a bar that has taken in an icon of ours.
                return m_ours.contains(window) && x11FillsHalf(c, window, child);
            }))
            ours.append(child);
    }
    return ours;
}

QList<X11TopLevel> X11Windows::foreignTopLevels(const QRect &area) const
{
    xcb_connection_t *c = m_connection;
    const QList<xcb_window_t> children = rootChildren();
    const QList<xcb_window_t> ours = ourTopLevels(children);
    struct Pending
    {
        xcb_window_t window;
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_shape_query_extents_cookie_t shape;
        xcb_get_property_cookie_t opacity;
    };
    std::vector<Pending> pending;
    for (const xcb_window_t child : children) {
        if (!ours.contains(child))
            pending.push_back({child, xcb_get_window_attributes(c, child), xcb_get_geometry(c, child),
                               xcb_shape_query_extents(c, child),
                               xcb_get_property(c, false, child, m_opacity, XCB_ATOM_CARDINAL, 0, 1)});
    }
    QList<X11TopLevel> windows;
    for (const Pending &cookie : pending) {
        const auto attributes = x11Await(c, xcb_get_window_attributes_reply, cookie.attributes);
        const auto geometry = x11Await(c, xcb_get_geometry_reply, cookie.geometry);
        const auto shape = x11Await(c, xcb_shape_query_extents_reply, cookie.shape);
        const auto opacity = x11Await(c, xcb_get_property_reply, cookie.opacity);
        if (!attributes || !geometry || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
            attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        const int border = geometry->border_width;
        const QRect outer(geometry->x, geometry->y, geometry->width + 2 * border, geometry->height + 2 * border);
        if (!outer.intersects(area))
            continue;
        const auto opacities = x11PropertyValues(opacity.get());
        windows.append({.window = cookie.window,
                        .visual = attributes->visual,
                        .origin = outer.topLeft(),
                        .size = outer.size(),
                        .border = border,
                        .isShaped = shape && shape->bounding_shaped,
                        .opacity = opacities.empty() ? quint16(0xffff) : quint16(opacities.front() >> 16)});
    }
    return windows;
}

} // namespace lucentra
