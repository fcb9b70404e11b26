#include "NeonBorderStyle.h"

using namespace Qt::StringLiterals;

namespace lucentra {

NeonBorderStyle neonBorderStyle(const QString &color)
{
    if (color == u"none"_s)
        return {.color = Qt::transparent};
    NeonBorderStyle style{
        .color = QColor::fromRgbF(1, 1, 1, 0.6F), .lineWidth = 2, .glowReach = 10, .glowOpacity = 0.42};
    if (color == u"blue"_s)
        style.color = QColor::fromRgbF(0.6F, 0.8F, 1, 0.8F);
    else if (color == u"pink"_s)
        style.color = QColor::fromRgbF(1, 0.7F, 0.8F, 0.8F);
    return style;
}

} // namespace lucentra
