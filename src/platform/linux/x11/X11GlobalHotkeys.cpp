#include "X11GlobalHotkeys.h"

#include "VirtualKeys.h"

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

constexpr quint8 sentEventBit = 0x80;

/// A held key repeats as a release and a press at nearly the same time; nobody's finger is that fast. Milliseconds.
constexpr quint32 repeatGap = 5;

// Key symbols of the X protocol.
constexpr xcb_keysym_t altLeft = 0xFFE9;
constexpr xcb_keysym_t altRight = 0xFFEA;
constexpr xcb_keysym_t superLeft = 0xFFEB;
constexpr xcb_keysym_t superRight = 0xFFEC;
constexpr xcb_keysym_t numLock = 0xFF7F;
constexpr xcb_keysym_t scrollLock = 0xFF14;

bool isOneOf(xcb_keysym_t symbol, std::initializer_list<xcb_keysym_t> wanted)
{
    return std::find(wanted.begin(), wanted.end(), symbol) != wanted.end();
}

/// Calls the function with every combination of the mask's bits, none of them included.
void forEachSubset(quint16 mask, const std::function<void(quint16)> &function)
{
    for (quint16 subset = mask;; subset = quint16((subset - 1) & mask)) {
        function(subset);
        if (subset == 0)
            return;
    }
}

} // namespace

class X11GlobalHotkeys::Registration : public HotkeyReference
{
public:
    Registration(X11GlobalHotkeys &owner, const Hotkey &wanted)
        : hotkey(wanted)
        , m_owner(owner)
    {
        m_owner.m_registrations.append(this);
    }
    ~Registration() override { m_owner.release(this); }

    const Hotkey hotkey;

private:
    X11GlobalHotkeys &m_owner;
};

X11GlobalHotkeys::X11GlobalHotkeys(Scheduler &scheduler)
    : m_scheduler(scheduler)
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    xcb_connection_t *c = m_connection.get();
    if (xcb_connection_has_error(c))
        return;
    m_root = x11Screen(c, screenNumber)->root;
    m_masks = queryModifierMasks();
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
}

X11GlobalHotkeys::~X11GlobalHotkeys() = default;

X11GlobalHotkeys::ModifierMasks X11GlobalHotkeys::queryModifierMasks()
{
    xcb_connection_t *c = m_connection.get();
    const xcb_setup_t *setup = xcb_get_setup(c);
    const auto modifiersCookie = xcb_get_modifier_mapping(c);
    const auto symbolsCookie =
        xcb_get_keyboard_mapping(c, setup->min_keycode, quint8(setup->max_keycode - setup->min_keycode + 1));
    X11Reply<xcb_get_modifier_mapping_reply_t> modifiers(xcb_get_modifier_mapping_reply(c, modifiersCookie, nullptr));
    X11Reply<xcb_get_keyboard_mapping_reply_t> symbols(xcb_get_keyboard_mapping_reply(c, symbolsCookie, nullptr));
    if (!modifiers || !symbols)
        return m_masks;
    const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
    const xcb_keysym_t *allSymbols = xcb_get_keyboard_mapping_keysyms(symbols.get());
    const int perModifier = modifiers->keycodes_per_modifier;
    const int perKey = symbols->keysyms_per_keycode;

    ModifierMasks found{.alt = 0, .super = 0, .locks = XCB_MOD_MASK_LOCK};
    for (int i = 0; i < 8 * perModifier; ++i) {
        if (keys[i] < setup->min_keycode)
            continue; // an empty place
        const auto mask = quint16(1U << (i / perModifier));
        const xcb_keysym_t *own = allSymbols + std::ptrdiff_t(keys[i] - setup->min_keycode) * perKey;
        for (int k = 0; k < perKey; ++k) {
            if (isOneOf(own[k], {altLeft, altRight}) && !found.alt)
                found.alt = mask;
            else if (isOneOf(own[k], {superLeft, superRight}) && !found.super)
                found.super = mask;
            else if (isOneOf(own[k], {numLock, scrollLock}))
                found.locks |= mask;
        }
    }
    const ModifierMasks usual;
    if (!found.alt)
        found.alt = usual.alt;
    if (!found.super)
        found.super = usual.super;
    found.locks &= ~quint16(found.alt | found.super | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL);
    return found;
}

quint16 X11GlobalHotkeys::stateOf(quint32 modifiers) const
{
    quint16 state = 0;
    if (modifiers & hotkeyModifier::shift)
        state |= XCB_MOD_MASK_SHIFT;
    if (modifiers & hotkeyModifier::control)
        state |= XCB_MOD_MASK_CONTROL;
    if (modifiers & hotkeyModifier::option)
        state |= m_masks.alt;
    if (modifiers & hotkeyModifier::command)
        state |= m_masks.super;
    return state;
}

tl::expected<std::unique_ptr<HotkeyReference>, int> X11GlobalHotkeys::registerHotkey(quint32 keyCode, quint32 modifiers,
                                                                                     HotkeyIdentifier identifier)
{
    const auto key = xKeyCodeOfVirtualKey(keyCode);
    if (!key || !m_root)
        return tl::unexpected(hotkeyStatus::invalid);
    // The server lets one connection grab the same combination twice.
    const bool isOurs = std::any_of(m_registrations.begin(), m_registrations.end(), [&](const Registration *each) {
        return each->hotkey.key == *key && stateOf(each->hotkey.modifiers) == stateOf(modifiers);
    });
    if (isOurs || !grab(*key, stateOf(modifiers)))
        return tl::unexpected(hotkeyStatus::taken);
    if (isDown(*key)) {
        m_held.insert(*key, std::nullopt);
        m_heldUnseen.insert(*key);
    }
    m_look = m_scheduler.after(releaseLookInterval, [this] { lookForReleases(); });
    return std::make_unique<Registration>(*this, Hotkey{*key, modifiers, identifier});
}

void X11GlobalHotkeys::setPressedHandler(std::function<void(HotkeyIdentifier)> pressed)
{
    m_pressed = std::move(pressed);
}

bool X11GlobalHotkeys::grab(quint8 key, quint16 state)
{
    xcb_connection_t *c = m_connection.get();
    QList<xcb_void_cookie_t> requests;
    forEachSubset(m_masks.locks, [&](quint16 locks) {
        requests.append(
            xcb_grab_key_checked(c, false, m_root, state | locks, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    });
    bool isGranted = true;
    for (const xcb_void_cookie_t request : requests) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(c, request));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        ungrab(key, state); // those variants that nobody else holds
    return isGranted;
}

void X11GlobalHotkeys::ungrab(quint8 key, quint16 state)
{
    xcb_void_cookie_t last{};
    forEachSubset(m_masks.locks, [&](quint16 locks) {
        last = xcb_ungrab_key_checked(m_connection.get(), key, m_root, state | locks);
    });
    // Once this returns, another program can have the combination.
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection.get(), last));
}

void X11GlobalHotkeys::release(const Registration *registration)
{
    m_registrations.removeIf([=](const Registration *each) { return each == registration; });
    ungrab(registration->hotkey.key, stateOf(registration->hotkey.modifiers));
}

bool X11GlobalHotkeys::isDown(quint8 key)
{
    const auto cookie = xcb_query_keymap(m_connection.get());
    X11Reply<xcb_query_keymap_reply_t> keymap(xcb_query_keymap_reply(m_connection.get(), cookie, nullptr));
    return keymap && (keymap->keys[key / 8] & (1U << (key % 8)));
}

void X11GlobalHotkeys::lookForReleases()
{
    for (auto key = m_heldUnseen.begin(); key != m_heldUnseen.end();) {
        if (isDown(*key)) {
            ++key;
        } else {
            m_held.remove(*key);
            key = m_heldUnseen.erase(key);
        }
    }
    if (!m_heldUnseen.isEmpty())
        m_look = m_scheduler.after(releaseLookInterval, [this] { lookForReleases(); });
    // Events that came with the answers are in the queue already and wake nobody.
    readEvents();
}

void X11GlobalHotkeys::readEvents()
{
    // What arrives while the keyboard is asked about is in the queue then, and wakes nobody.
    while (takeEvents())
        keyboardChanged();
}

bool X11GlobalHotkeys::takeEvents()
{
    bool hasKeyboardChanged = false;
    while (X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        const quint8 type = event->response_type & ~sentEventBit;
        if (type == XCB_KEY_PRESS) {
            const auto *press = reinterpret_cast<const xcb_key_press_event_t *>(event.get());
            if (!isRepeat(press->detail, press->time))
                keyPressed(press->detail, press->state);
        } else if (type == XCB_KEY_RELEASE) {
            const auto *release = reinterpret_cast<const xcb_key_release_event_t *>(event.get());
            m_held.insert(release->detail, release->time);
        } else if (type == XCB_MAPPING_NOTIFY) {
            hasKeyboardChanged = true;
        }
    }
    if (!xcb_connection_has_error(m_connection.get()))
        return hasKeyboardChanged;
    m_notifier->setEnabled(false);
    return false;
}

bool X11GlobalHotkeys::isRepeat(quint8 key, quint32 time)
{
    const auto held = m_held.constFind(key);
    const bool isHeld = held != m_held.cend() && (!*held || time - **held <= repeatGap);
    m_held.insert(key, std::nullopt);
    return isHeld;
}

void X11GlobalHotkeys::keyPressed(quint8 key, quint16 state)
{
    // In another group of the layout the server may add modifiers that aren't pressed.
    const quint16 modifiers = state & (XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | m_masks.alt | m_masks.super);
    for (const Registration *each : m_registrations) {
        if (each->hotkey.key == key && stateOf(each->hotkey.modifiers) == modifiers) {
            const HotkeyIdentifier identifier = each->hotkey.identifier;
            if (m_pressed)
                m_pressed(identifier);
            return; // the handler may have changed the registrations
        }
    }
}

void X11GlobalHotkeys::keyboardChanged()
{
    const ModifierMasks masks = queryModifierMasks();
    if (masks == m_masks)
        return;
    for (const Registration *each : m_registrations)
        ungrab(each->hotkey.key, stateOf(each->hotkey.modifiers));
    m_masks = masks;
    for (const Registration *each : m_registrations)
        grab(each->hotkey.key, stateOf(each->hotkey.modifiers));
}

} // namespace lucentra
