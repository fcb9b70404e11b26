#include "X11ProgramClaim.h"

namespace lucentra {

namespace {

/// For the selection and for the message to its owner.
constexpr auto claimName = "_COM_TARNBY_LUCENTRA";

} // namespace

X11ProgramClaim::X11ProgramClaim()
{
    xcb_connection_t *c = m_connection.get();
    m_selection = m_connection ? x11Atom(c, claimName) : xcb_atom_t(XCB_ATOM_NONE);
    if (!m_selection)
        return;
    const auto owner = x11Ask(c, xcb_get_selection_owner, xcb_get_selection_owner_reply, m_selection);
    m_owner = owner ? owner->owner : xcb_window_t(XCB_WINDOW_NONE);
    if (isTaken())
        return;
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, m_connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(c, window, m_selection, XCB_CURRENT_TIME);
    m_connection.listen([this](const xcb_generic_event_t &event) {
        if (x11EventType(event) == XCB_CLIENT_MESSAGE &&
            x11Event<xcb_client_message_event_t>(event).type == m_selection && onShowAsked)
            onShowAsked();
    });
}

void X11ProgramClaim::askToShow()
{
    if (!isTaken())
        return;
    xcb_client_message_event_t message{
        .response_type = XCB_CLIENT_MESSAGE, .format = 32, .window = m_owner, .type = m_selection};
    // Without an event mask, it goes to the client that created the window.
    xcb_send_event(m_connection.get(), false, m_owner, 0, reinterpret_cast<const char *>(&message));
    const auto isThrough = x11Ask(m_connection.get(), xcb_get_input_focus, xcb_get_input_focus_reply);
}

} // namespace lucentra
