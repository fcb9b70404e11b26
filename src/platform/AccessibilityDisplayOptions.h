#pragma once

namespace lucentra {

/// The desktop's accessibility options that concern drawing.
struct AccessibilityDisplayOptions
{
    bool reduceMotion = false;       ///< no animations
    bool reduceTransparency = false; ///< surfaces are opaque

    bool operator==(const AccessibilityDisplayOptions &) const = default;
};

} // namespace lucentra
