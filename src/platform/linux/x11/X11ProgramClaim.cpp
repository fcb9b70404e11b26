#include "X11ProgramClaim.h"

namespace lucentra {

namespace {

/// For the selection and for the message to its owner.
constexpr auto claimName = "_COM_TARNBY_LUCENTRA";

} // namespace

X11ProgramClaim::X11ProgramClaim()
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    xcb_connection_t *c = m_connection.get();
    m_selection = xcb_connection_has_error(c) ? xcb_atom_t(XCB_ATOM_NONE) : x11Atom(c, claimName);
    if (!m_selection)
        return;
    const auto cookie = xcb_get_selection_owner(c, m_selection);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(c, cookie, nullptr));
    m_owner = owner ? owner->owner : xcb_window_t(XCB_WINDOW_NONE);
    if (isTaken())
        return;
    const xcb_window_t window = xcb_generate_id(c);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(c, window, m_selection, XCB_CURRENT_TIME);
    xcb_flush(c);
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
}

X11ProgramClaim::~X11ProgramClaim() = default;

void X11ProgramClaim::askToShow()
{
    if (!isTaken())
        return;
    xcb_client_message_event_t message{
        .response_type = XCB_CLIENT_MESSAGE, .format = 32, .window = m_owner, .type = m_selection};
    // Without a mask it goes to whoever made the window.
    xcb_send_event(m_connection.get(), false, m_owner, 0, reinterpret_cast<const char *>(&message));
    const X11Reply<xcb_get_input_focus_reply_t> isThrough(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

void X11ProgramClaim::readEvents()
{
    constexpr quint8 sentEventBit = 0x80;
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        if ((event->response_type & ~sentEventBit) != XCB_CLIENT_MESSAGE)
            continue;
        const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
        if (message->type == m_selection && onShowAsked)
            onShowAsked();
    }
    if (xcb_connection_has_error(m_connection.get()))
        m_notifier->setEnabled(false);
}

} // namespace lucentra
