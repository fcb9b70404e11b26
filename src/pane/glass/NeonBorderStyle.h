#pragma once

#include <QColor>
#include <QString>

namespace lucentra {

/// How the pane's border is drawn. Lengths are points.
struct NeonBorderStyle
{
    QColor color; ///< of line and glow, with its opacity
    double lineWidth = 0;
    double glowReach = 0;   ///< from the line inwards, where a seventh of its light is left
    double glowOpacity = 0; ///< while nothing is going on

    bool isVisible() const { return lineWidth > 0; }
    bool operator==(const NeonBorderStyle &) const = default;
};

/// The style for a value of the setting: "white", "blue", "pink", "none" (no border); any other value is "white".
NeonBorderStyle neonBorderStyle(const QString &color);

} // namespace lucentra
