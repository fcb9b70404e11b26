#pragma once

#include <functional>

namespace lucentra {

/// The desktop's accessibility options that concern drawing.
struct AccessibilityDisplayOptions
{
    bool reduceMotion = false;       ///< no animations
    bool reduceTransparency = false; ///< surfaces are opaque

    bool operator==(const AccessibilityDisplayOptions &) const = default;
};

/// The desktop's display options, followed while the program runs.
class AccessibilityDisplaySource
{
public:
    virtual ~AccessibilityDisplaySource() = default;

    /// The current options. The defaults until the desktop has answered, or if it has no such options.
    virtual AccessibilityDisplayOptions options() const = 0;
    /// Calls the handler with the new options whenever they change. Replaces the previous handler.
    virtual void setChangeHandler(std::function<void(const AccessibilityDisplayOptions &)> changed) = 0;
};

} // namespace lucentra
