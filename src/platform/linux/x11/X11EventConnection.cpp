#include "X11EventConnection.h"

#include <QPointer>

#include <utility>

namespace lucentra {

X11EventConnection::X11EventConnection()
    : m_connection(xcb_connect(nullptr, &m_screenNumber))
{
    if (*this)
        m_root = x11Screen(get(), m_screenNumber)->root;
}

void X11EventConnection::listen(std::function<void(const xcb_generic_event_t &)> handle, std::function<void()> handled)
{
    m_handle = std::move(handle);
    m_handled = std::move(handled);
    xcb_flush(get());
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(get()), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { handlePending(); });
    handlePending();
}

void X11EventConnection::handlePending()
{
    // A handler may destroy the connection: then the notifier is gone, and what runs must not go with it.
    const QPointer<QSocketNotifier> notifier(m_notifier.get());
    const auto handle = m_handle;
    const auto handled = m_handled;
    for (bool hasEvents = true; hasEvents && notifier;) {
        hasEvents = false;
        while (notifier) {
            const X11Reply<xcb_generic_event_t> event(xcb_poll_for_event(get()));
            if (!event)
                break;
            hasEvents = true;
            handle(*event);
        }
        if (hasEvents && notifier && handled)
            handled();
    }
    if (notifier && !*this)
        notifier->setEnabled(false);
}

} // namespace lucentra
