#pragma once

#include <QColor>
#include <QString>

namespace lucentra {

/// How the pane's border is drawn. Lengths are points.
struct NeonBorderStyle
{
    QColor color; ///< of line and glow, including its opacity
    double lineWidth = 0;
    double glowReach = 0;   ///< distance from the line at which a seventh of the light is left
    double glowOpacity = 0; ///< while no pass is running

    bool isVisible() const { return lineWidth > 0; }
    bool operator==(const NeonBorderStyle &) const = default;
};

/// The style for a value of the setting: "white", "blue", "pink", "none" (no border); any other value is "white".
NeonBorderStyle neonBorderStyle(const QString &color);

} // namespace lucentra
