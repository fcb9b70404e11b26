#include "X11CompositingMonitor.h"

#include <xcb/xfixes.h>

#include <QByteArray>

#include <utility>

namespace lucentra {

X11CompositingMonitor::X11CompositingMonitor()
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    xcb_connection_t *c = m_connection.get();
    if (xcb_connection_has_error(c))
        return;
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screenNumber);
    const xcb_atom_t selection = x11Atom(c, name.constData());
    const xcb_query_extension_reply_t *fixes = xcb_get_extension_data(c, &xcb_xfixes_id);
    if (!selection || !fixes || !fixes->present)
        return;
    xcb_discard_reply(c, xcb_xfixes_query_version(c, 5, 0).sequence);
    xcb_xfixes_select_selection_input(c, x11Screen(c, screenNumber)->root, selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto ownerCookie = xcb_get_selection_owner(c, selection);
    X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(c, ownerCookie, nullptr));
    m_isComposited = owner && owner->owner;
    m_selectionEvent = fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
    readEvents(); // what came with the answer is in the queue already and wakes nobody
}

X11CompositingMonitor::~X11CompositingMonitor() = default;

void X11CompositingMonitor::readEvents()
{
    constexpr quint8 sentEventBit = 0x80;
    bool isComposited = m_isComposited;
    while (X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        if ((event->response_type & ~sentEventBit) == m_selectionEvent)
            isComposited = reinterpret_cast<const xcb_xfixes_selection_notify_event_t *>(event.get())->owner != 0;
    }
    if (xcb_connection_has_error(m_connection.get()))
        m_notifier->setEnabled(false);
    if (std::exchange(m_isComposited, isComposited) != isComposited && m_changed)
        m_changed(isComposited);
}

} // namespace lucentra
