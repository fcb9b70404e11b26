#pragma once

#include "Callback.h"
#include "GlobalHotkeys.h"
#include "Scheduler.h"
#include "X11EventConnection.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <memory>
#include <optional>

namespace lucentra {

/// Hotkeys as passive key grabs on the root window, on a private connection to $DISPLAY.
///
/// A combination is grabbed once for each state of the lock keys (Caps Lock, Num Lock, Scroll Lock if it is a
/// modifier). A combination that another program has grabbed is refused. When the keyboard or its layout changes, Alt,
/// Super and the lock keys are looked up again. Key repeats are not reported as presses; a key that is down while its
/// hotkey is registered must be released first.
class X11GlobalHotkeys : public GlobalHotkeys
{
public:
    /// Polling interval for the release of a key that was down while its hotkey was registered; the server doesn't
    /// report that release.
    static constexpr std::chrono::milliseconds releasePollInterval{50};

    explicit X11GlobalHotkeys(Scheduler &scheduler);

    bool areKeysChosenHere() const override { return true; }
    int registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers) override;
    void unregisterHotkeys() override;
    void setPressedHandler(std::function<void(HotkeyAction)> pressed) override;

private:
    struct Hotkey
    {
        quint8 key = 0;        ///< X key code
        quint32 modifiers = 0; ///< hotkey modifiers
        HotkeyAction action;
    };
    /// The masks of the X server's modifiers on the current keyboard.
    struct ModifierMasks
    {
        quint16 alt = XCB_MOD_MASK_1;
        quint16 super = XCB_MOD_MASK_4;
        quint16 locks = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2;

        bool operator==(const ModifierMasks &) const = default;
    };

    ModifierMasks queryModifierMasks();
    quint16 stateOf(quint32 modifiers) const;
    bool grab(quint8 key, quint16 state);
    void ungrab(quint8 key, quint16 state);
    bool isDown(quint8 key);
    void pollReleases();
    void handle(const xcb_generic_event_t &event);
    bool isRepeat(quint8 key, quint32 time);
    void keyPressed(quint8 key, quint16 state);
    void updateModifierMasks();

    Scheduler &m_scheduler;
    X11EventConnection m_connection;
    ModifierMasks m_masks;
    QList<Hotkey> m_registered;
    /// Keys that were pressed, with the server's time of their release, or nullopt while they are down.
    QHash<quint8, std::optional<quint32>> m_held;
    QSet<quint8> m_heldUnseen;         ///< the keys among them whose release the server won't report
    bool m_hasKeyboardChanged = false; ///< since the modifiers were looked up
    std::unique_ptr<ScheduledTask> m_poll;
    Callback<HotkeyAction> m_pressed;
};

} // namespace lucentra
