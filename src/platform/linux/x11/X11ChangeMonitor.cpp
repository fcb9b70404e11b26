#include "X11ChangeMonitor.h"

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

QRect outerFrame(int x, int y, int width, int height, int border)
{
    return {x, y, width + 2 * border, height + 2 * border};
}

} // namespace

X11ChangeMonitor::X11ChangeMonitor(X11ResourceRange ours, std::function<QRect(const ScreenRect &)> toNative)
    : m_ours(ours)
    , m_toNative(std::move(toNative))
{
}

void X11ChangeMonitor::watch(const ScreenRect &area, std::function<void(const QRect &)> changed)
{
    m_changed = std::move(changed);
    m_area = area.isEmpty() ? QRect() : m_toNative(area);
    m_isArmed = true;
    m_missed = {};
    if (m_area.isEmpty())
        stop();
    else if (m_connection)
        awaitDamage();
    else
        start();
}

void X11ChangeMonitor::rearm()
{
    if (!m_connection)
        return;
    m_isArmed = true;
    reportIfInside(std::exchange(m_missed, QRect()));
}

void X11ChangeMonitor::start()
{
    m_connection = std::make_unique<X11EventConnection>();
    xcb_connection_t *c = m_connection->get();
    const xcb_query_extension_reply_t *damage = *m_connection ? xcb_get_extension_data(c, &xcb_damage_id) : nullptr;
    if (!damage || !damage->present) {
        m_connection.reset();
        return;
    }
    m_damageEvent = damage->first_event;
    xcb_discard_reply(c, xcb_damage_query_version(c, 1, 1).sequence);
    m_desktopPicture = x11Atom(c, "_XROOTPMAP_ID");
    const quint32 events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(c, m_connection->root(), XCB_CW_EVENT_MASK, &events);
    const auto tree = x11Ask(c, xcb_query_tree, xcb_query_tree_reply, m_connection->root());
    if (tree) {
        const xcb_window_t *children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < tree->children_len; ++i)
            addWindow(children[i]);
    }
    m_connection->listen([this](const xcb_generic_event_t &event) { handle(event); });
}

void X11ChangeMonitor::stop()
{
    m_windows.clear();
    m_connection.reset();
}

bool X11ChangeMonitor::isOurs(xcb_window_t window)
{
    if (m_ours.contains(window))
        return true;
    const auto tree = x11Ask(m_connection->get(), xcb_query_tree, xcb_query_tree_reply, window);
    if (!tree)
        return true; // the window is gone
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    return std::any_of(children, children + tree->children_len, [this, window](xcb_window_t child) {
        return m_ours.contains(child) && x11FillsHalf(m_connection->get(), child, window); // not a panel with our icon
    });
}

void X11ChangeMonitor::addWindow(xcb_window_t window)
{
    xcb_connection_t *c = m_connection->get();
    const auto attributes = x11Ask(c, xcb_get_window_attributes, xcb_get_window_attributes_reply, window);
    const auto geometry = x11Ask(c, xcb_get_geometry, xcb_get_geometry_reply, window);
    if (!attributes || !geometry || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
        attributes->map_state == XCB_MAP_STATE_UNMAPPED || m_windows.contains(window) || isOurs(window))
        return;
    Watched watched{.frame =
                        outerFrame(geometry->x, geometry->y, geometry->width, geometry->height, geometry->border_width),
                    .damage = xcb_generate_id(c)};
    xcb_damage_create(c, watched.damage, window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    xcb_flush(c);
    m_windows.insert(window, watched);
    reportIfInside(watched.frame);
}

void X11ChangeMonitor::handle(const xcb_generic_event_t &event)
{
    const int type = x11EventType(event);
    if (type == m_damageEvent + XCB_DAMAGE_NOTIFY) {
        const auto watched = m_windows.find(x11Event<xcb_damage_notify_event_t>(event).drawable);
        if (watched == m_windows.end())
            return;
        watched->isDamaged = true;
        reportIfInside(watched->frame);
    } else if (type == XCB_PROPERTY_NOTIFY) {
        if (x11Event<xcb_property_notify_event_t>(event).atom == m_desktopPicture)
            reportIfInside(m_area);
    } else if (type == XCB_MAP_NOTIFY) {
        addWindow(x11Event<xcb_map_notify_event_t>(event).window);
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto &configure = x11Event<xcb_configure_notify_event_t>(event);
        const auto watched = m_windows.find(configure.window);
        if (watched == m_windows.end())
            return;
        const QRect before = std::exchange(watched->frame, outerFrame(configure.x, configure.y, configure.width,
                                                                      configure.height, configure.border_width));
        reportIfInside(before | watched->frame);
    } else if (type == XCB_UNMAP_NOTIFY) {
        const auto gone = m_windows.take(x11Event<xcb_unmap_notify_event_t>(event).window);
        if (gone.damage)
            xcb_damage_destroy(m_connection->get(), gone.damage); // fails silently if the window is destroyed
        reportIfInside(gone.frame);
    }
}

void X11ChangeMonitor::reportIfInside(const QRect &native)
{
    if (!native.intersects(m_area))
        return;
    if (!m_isArmed) {
        m_missed |= native;
        return;
    }
    m_isArmed = false;
    awaitDamage();
    m_changed((native & m_area).translated(-m_area.topLeft()));
}

/// Further damage causes another event. To be called before a picture is taken, or what changes after it would go
/// unnoticed.
void X11ChangeMonitor::awaitDamage()
{
    for (Watched &watched : m_windows) {
        if (std::exchange(watched.isDamaged, false))
            xcb_damage_subtract(m_connection->get(), watched.damage, XCB_NONE, XCB_NONE);
    }
    xcb_flush(m_connection->get());
}

} // namespace lucentra
