#pragma once

#include <QString>

#include <optional>

namespace lucentra {

// How hotkeys are stored: a virtual key code names a physical position on the keyboard, whatever the layout; modifiers
// are a mask of flags. The numbers are those of the desktop that the settings' format comes from.

/// Flags of "hotkeyModifiers". The low 16 bits are device-dependent and never stored.
namespace modifierFlag {
inline constexpr quint32 shift = 0x20000;
inline constexpr quint32 control = 0x40000;
inline constexpr quint32 option = 0x80000;   ///< Alt
inline constexpr quint32 command = 0x100000; ///< Super
} // namespace modifierFlag

/// Modifiers of a registered hotkey, in that desktop's second numbering. They appear in the log.
namespace hotkeyModifier {
inline constexpr quint32 command = 0x100;
inline constexpr quint32 shift = 0x200;
inline constexpr quint32 option = 0x800;
inline constexpr quint32 control = 0x1000;
} // namespace hotkeyModifier

/// Converts modifier flags to hotkey modifiers. Other bits are ignored.
quint32 hotkeyModifiersOfFlags(quint64 flags);

namespace virtualKey {
inline constexpr quint32 t = 17;
inline constexpr quint32 returnKey = 36;
inline constexpr quint32 escape = 53;
} // namespace virtualKey

/// The X key code of a position, as every keyboard on Linux counts them. Returns nullopt if the number names no key.
///
/// Keys that the stored numbering lacks (Print, Pause, the conversion keys) have 0x100 plus their X key code, so that
/// every key of a keyboard has exactly one number either way.
std::optional<quint8> xKeyCodeOfVirtualKey(quint32 virtualKeyCode);
/// The inverse. Returns nullopt for codes below 8, which no key has.
std::optional<quint32> virtualKeyOfXKeyCode(quint32 xKeyCode);

/// Whether the key is a modifier, which can't be a hotkey on its own.
bool isModifierKey(quint32 virtualKeyCode);

/// The name of a key that prints no character ("F5", "Home", "←"). Empty for keys whose character depends on the
/// layout.
QString virtualKeyName(quint32 virtualKeyCode);

/// The label of a key on an American keyboard, for keys whose character can't be shown. Empty if it has no such key.
QString americanKeyLabel(quint32 virtualKeyCode);

/// The names of hotkey modifiers as the toolkit and most desktops write them: "Ctrl+Alt+".
QString modifierNames(quint32 hotkeyModifiers);
/// A key's name as the toolkit writes it: "Return" for "↩". Other texts stay as they are.
QString toolkitKeyName(const QString &name);
/// The same as the desktop portal writes it.
QString portalKeyName(const QString &name);

/// A combination as it is stored for display: "⌃", "⌥", "⇧", "⌘" in this order, then the key, upper-cased. Empty if the
/// key is empty.
QString hotkeyDisplayString(quint32 flags, const QString &key);

/// Such a combination as this desktop writes it: "Alt+T". Any other text stays as it is.
QString desktopNameOfHotkey(const QString &combination);

/// The key of such a combination for menus: the name of a key without a character, else the last character in lower
/// case, which with the same modifiers is shown as the same combination; "t" for an empty combination.
QString menuKeyOfDisplayString(const QString &combination);

} // namespace lucentra
