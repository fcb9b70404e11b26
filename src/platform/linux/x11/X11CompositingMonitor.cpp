#include "X11CompositingMonitor.h"

#include <xcb/xfixes.h>

#include <QByteArray>

#include <utility>

namespace lucentra {

X11CompositingMonitor::X11CompositingMonitor()
{
    if (!m_connection)
        return;
    xcb_connection_t *c = m_connection.get();
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(m_connection.screenNumber());
    const xcb_atom_t selection = x11Atom(c, name.constData());
    const xcb_query_extension_reply_t *fixes = xcb_get_extension_data(c, &xcb_xfixes_id);
    if (!selection || !fixes || !fixes->present)
        return;
    xcb_discard_reply(c, xcb_xfixes_query_version(c, 5, 0).sequence);
    xcb_xfixes_select_selection_input(c, m_connection.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto owner = x11Ask(c, xcb_get_selection_owner, xcb_get_selection_owner_reply, selection);
    m_isComposited = owner && owner->owner;
    m_connection.listen([this, type = fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY](const auto &event) {
        if (x11EventType(event) != type)
            return;
        const bool isComposited = x11Event<xcb_xfixes_selection_notify_event_t>(event).owner != XCB_WINDOW_NONE;
        if (std::exchange(m_isComposited, isComposited) != isComposited)
            onChanged(isComposited);
    });
}

} // namespace lucentra
