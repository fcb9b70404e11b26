#pragma once

#include <functional>

namespace lucentra {

/// What the user has asked the desktop for, of what concerns drawing.
struct AccessibilityDisplayOptions
{
    bool reduceMotion = false;       ///< nothing moves or fades without need
    bool reduceTransparency = false; ///< surfaces are opaque

    bool operator==(const AccessibilityDisplayOptions &) const = default;
};

/// Knows the desktop's display options while the program runs. Main thread only.
class AccessibilityDisplaySource
{
public:
    virtual ~AccessibilityDisplaySource() = default;

    /// The options as they are known now; the defaults until the desktop has answered, and where it has none.
    virtual AccessibilityDisplayOptions options() const = 0;
    /// Called with the new options whenever they change, until the source goes. Replaces the handler before it.
    virtual void setChangeHandler(std::function<void(const AccessibilityDisplayOptions &)> changed) = 0;
};

} // namespace lucentra
