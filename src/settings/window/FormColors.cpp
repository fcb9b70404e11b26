#include "FormColors.h"

#include <QLabel>

namespace lucentra {

void setTone(QLabel &label, Tone tone)
{
    const QPalette own = QPalette();
    const bool isDark = own.color(QPalette::Window).lightness() < own.color(QPalette::WindowText).lightness();
    // Each colour has a contrast of at least 4.5 to 1 on the plate.
    const QColor color = [&] {
        switch (tone) {
        case Tone::Quiet:
            return isDark ? QColor(0xb4, 0xb6, 0xba) : QColor(0x5c, 0x5e, 0x62);
        case Tone::Good:
            return isDark ? QColor(0x6f, 0xd1, 0x87) : QColor(0x1c, 0x76, 0x35);
        case Tone::Warning:
            return isDark ? QColor(0xf2, 0xae, 0x55) : QColor(0x9c, 0x55, 0x00);
        case Tone::Bad:
            break;
        }
        return isDark ? QColor(0xff, 0x8f, 0x85) : QColor(0xb8, 0x20, 0x1a);
    }();
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, color);
    label.setPalette(palette);
}

} // namespace lucentra
