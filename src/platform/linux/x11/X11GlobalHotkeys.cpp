#include "X11GlobalHotkeys.h"

#include "VirtualKeys.h"

#include <X11/keysym.h>
#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace lucentra {

namespace {

/// A key repeat is a release and a press within this time, in milliseconds; no finger is that fast.
constexpr quint32 repeatGap = 5;

using KeySymbols = Owned<xcb_key_symbols_t, xcb_key_symbols_free>;

/// The modifiers that keys with one of the symbols are assigned to: a mask.
quint16 modifiersOf(xcb_key_symbols_t *symbols, const xcb_get_modifier_mapping_reply_t *mapping,
                    std::initializer_list<xcb_keysym_t> wanted)
{
    const xcb_keycode_t *assigned = xcb_get_modifier_mapping_keycodes(mapping);
    quint16 mask = 0;
    for (const xcb_keysym_t symbol : wanted) {
        const X11Reply<xcb_keycode_t> keys(xcb_key_symbols_get_keycode(symbols, symbol));
        for (const xcb_keycode_t *key = keys.get(); key && *key != XCB_NO_SYMBOL; ++key) {
            for (int i = 0; i < 8 * mapping->keycodes_per_modifier; ++i) {
                if (assigned[i] == *key)
                    mask |= quint16(1U << (i / mapping->keycodes_per_modifier));
            }
        }
    }
    return mask;
}

/// The lowest modifier of a mask, or the usual one if the mask is empty.
quint16 firstModifier(quint16 mask, quint16 usual)
{
    return mask ? quint16(mask & -mask) : usual;
}

/// Calls the function with every subset of the mask's bits, including the empty one.
void forEachSubset(quint16 mask, const std::function<void(quint16)> &function)
{
    for (quint16 subset = mask;; subset = quint16((subset - 1) & mask)) {
        function(subset);
        if (subset == 0)
            return;
    }
}

} // namespace

X11GlobalHotkeys::X11GlobalHotkeys(Scheduler &scheduler)
    : m_scheduler(scheduler)
{
    if (!m_connection)
        return;
    m_masks = queryModifierMasks();
    m_connection.listen([this](const xcb_generic_event_t &event) { handle(event); }, [this] { updateModifierMasks(); });
}

X11GlobalHotkeys::ModifierMasks X11GlobalHotkeys::queryModifierMasks()
{
    xcb_connection_t *c = m_connection.get();
    const auto cookie = xcb_get_modifier_mapping(c);
    const KeySymbols symbols(xcb_key_symbols_alloc(c));
    const X11Reply<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(c, cookie, nullptr));
    if (!symbols || !mapping)
        return m_masks;
    const ModifierMasks usual;
    ModifierMasks found;
    found.alt = firstModifier(modifiersOf(symbols.get(), mapping.get(), {XK_Alt_L, XK_Alt_R}), usual.alt);
    found.super = firstModifier(modifiersOf(symbols.get(), mapping.get(), {XK_Super_L, XK_Super_R}), usual.super);
    found.locks = XCB_MOD_MASK_LOCK | modifiersOf(symbols.get(), mapping.get(), {XK_Num_Lock, XK_Scroll_Lock});
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

int X11GlobalHotkeys::registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers)
{
    const auto key = xKeyCodeOfVirtualKey(keyCode);
    if (!key || !m_connection)
        return hotkeyStatus::invalid;
    // The server would let one connection grab the same combination twice.
    const bool isOurs = std::any_of(m_registered.begin(), m_registered.end(), [&](const Hotkey &each) {
        return each.key == *key && stateOf(each.modifiers) == stateOf(modifiers);
    });
    if (isOurs || !grab(*key, stateOf(modifiers)))
        return hotkeyStatus::taken;
    if (isDown(*key)) {
        m_held.insert(*key, std::nullopt);
        m_heldUnseen.insert(*key);
    }
    m_poll = m_scheduler.after(releasePollInterval, [this] { pollReleases(); });
    m_registered.append({*key, modifiers, action});
    return hotkeyStatus::registered;
}

void X11GlobalHotkeys::unregisterHotkeys()
{
    for (const Hotkey &each : std::exchange(m_registered, {}))
        ungrab(each.key, stateOf(each.modifiers));
}

void X11GlobalHotkeys::setPressedHandler(std::function<void(HotkeyAction)> pressed)
{
    m_pressed = std::move(pressed);
}

bool X11GlobalHotkeys::grab(quint8 key, quint16 state)
{
    xcb_connection_t *c = m_connection.get();
    QList<xcb_void_cookie_t> requests;
    forEachSubset(m_masks.locks, [&](quint16 locks) {
        requests.append(xcb_grab_key_checked(c, false, m_connection.root(), state | locks, key, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC));
    });
    bool isGranted = true;
    for (const xcb_void_cookie_t request : requests) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(c, request));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        ungrab(key, state); // the variants that were granted
    return isGranted;
}

void X11GlobalHotkeys::ungrab(quint8 key, quint16 state)
{
    xcb_void_cookie_t last{};
    forEachSubset(m_masks.locks, [&](quint16 locks) {
        last = xcb_ungrab_key_checked(m_connection.get(), key, m_connection.root(), state | locks);
    });
    // Wait, so that another program can grab the combination once this returns.
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection.get(), last));
}

bool X11GlobalHotkeys::isDown(quint8 key)
{
    const auto keymap = x11Ask(m_connection.get(), xcb_query_keymap, xcb_query_keymap_reply);
    return keymap && (keymap->keys[key / 8] & (1U << (key % 8)));
}

void X11GlobalHotkeys::pollReleases()
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
        m_poll = m_scheduler.after(releasePollInterval, [this] { pollReleases(); });
    m_connection.handlePending();
}

void X11GlobalHotkeys::handle(const xcb_generic_event_t &event)
{
    const int type = x11EventType(event);
    if (type == XCB_KEY_PRESS) {
        const auto &press = x11Event<xcb_key_press_event_t>(event);
        if (!isRepeat(press.detail, press.time))
            keyPressed(press.detail, press.state);
    } else if (type == XCB_KEY_RELEASE) {
        const auto &release = x11Event<xcb_key_release_event_t>(event);
        m_held.insert(release.detail, release.time);
    } else if (type == XCB_MAPPING_NOTIFY) {
        m_hasKeyboardChanged = true;
    }
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
    // In another group of the layout the server may report modifiers that aren't pressed.
    const quint16 modifiers = state & (XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | m_masks.alt | m_masks.super);
    for (const Hotkey &each : std::as_const(m_registered)) {
        if (each.key == key && stateOf(each.modifiers) == modifiers) {
            const HotkeyAction action = each.action;
            m_pressed(action);
            return; // the handler may have changed m_registered
        }
    }
}

void X11GlobalHotkeys::updateModifierMasks()
{
    if (!std::exchange(m_hasKeyboardChanged, false))
        return;
    const ModifierMasks masks = queryModifierMasks();
    if (masks == m_masks)
        return;
    for (const Hotkey &each : std::as_const(m_registered))
        ungrab(each.key, stateOf(each.modifiers));
    m_masks = masks;
    for (const Hotkey &each : std::as_const(m_registered))
        grab(each.key, stateOf(each.modifiers));
}

} // namespace lucentra
