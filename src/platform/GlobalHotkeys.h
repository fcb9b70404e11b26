#pragma once

#include <QString>

#include <functional>

namespace lucentra {

/// What a hotkey does.
enum class HotkeyAction { TogglePane, TranslateArea, SwitchLive };

/// Whether a hotkey was registered, or why not. The numbers appear in the log.
namespace hotkeyStatus {
inline constexpr int registered = 0;
inline constexpr int taken = -9878;   ///< registered already, by another program or by this one
inline constexpr int invalid = -9879; ///< there is no such key, or no keyboard
} // namespace hotkeyStatus

/// Key combinations that reach the program whichever program has the focus.
class GlobalHotkeys
{
public:
    virtual ~GlobalHotkeys() = default;

    /// Whether the program chooses the keys. Otherwise the desktop lets the user choose them, and the keys that are
    /// given to `registerHotkey` are at most a suggestion.
    virtual bool areKeysChosenHere() const = 0;

    /// Registers the hotkey of an action: a virtual key code and hotkey modifiers (VirtualKeys.h). Returns one of
    /// `hotkeyStatus`.
    virtual int registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers) = 0;
    /// Unregisters all hotkeys.
    virtual void unregisterHotkeys() = 0;

    /// The desktop's own description of an action's keys. Empty if the program chooses the keys or the desktop has none.
    virtual QString keysOfDesktop(HotkeyAction) const { return {}; }

    /// Opens the dialog in which the desktop changes the keys. Empty if the desktop doesn't open it for programs.
    virtual std::function<void()> keyDialog() { return {}; }

    /// Calls the handler when it has changed who chooses the keys. Everything must be registered again then.
    virtual void setChangeHandler(std::function<void()>) {}

    /// Calls the handler for every press of a registered hotkey, not for its repeats. Replaces the previous handler; an
    /// empty function removes it. A handler may register and unregister hotkeys.
    virtual void setPressedHandler(std::function<void(HotkeyAction)> pressed) = 0;
};

} // namespace lucentra
