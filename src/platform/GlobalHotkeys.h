#pragma once

#include <tl/expected.hpp>

#include <QtGlobal>

#include <functional>
#include <memory>

namespace lucentra {

/// Tells a hotkey from those of other programs and from the program's own others.
struct HotkeyIdentifier
{
    quint32 signature = 0; ///< four characters, the first in the highest byte
    quint32 id = 0;

    bool operator==(const HotkeyIdentifier &) const = default;
};

/// Keeps a hotkey registered as long as it lives. It must go before the service that gave it.
class HotkeyReference
{
public:
    virtual ~HotkeyReference() = default;
};

/// Why a hotkey was refused, in the numbers that the log's lines tell.
namespace hotkeyStatus {
inline constexpr int taken = -9878;   ///< another program holds it, or this one does already
inline constexpr int invalid = -9879; ///< there is no such key, or no keyboard to be asked
} // namespace hotkeyStatus

/// Combinations of keys that reach the program whichever program has the focus. Main thread only.
class GlobalHotkeys
{
public:
    virtual ~GlobalHotkeys() = default;

    /// Registers a combination: a virtual key code and hotkey modifiers (VirtualKeys.h). A refusal is a status of
    /// `hotkeyStatus`, known when this returns.
    [[nodiscard]] virtual tl::expected<std::unique_ptr<HotkeyReference>, int>
    registerHotkey(quint32 keyCode, quint32 modifiers, HotkeyIdentifier identifier) = 0;

    /// Called for every press of a registered hotkey, once while it is held down. Replaces the handler before it; an
    /// empty function removes it. A handler may register and let go of hotkeys.
    virtual void setPressedHandler(std::function<void(HotkeyIdentifier)> pressed) = 0;
};

} // namespace lucentra
