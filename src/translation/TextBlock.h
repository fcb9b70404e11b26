#pragma once

#include <QList>
#include <QRectF>
#include <QString>

namespace lucentra {

/// One recognized line of the captured image. Blocks keep the recognizer's order and are identified by position.
struct TextBlock
{
    QString text;   ///< exactly as recognized
    QRectF normBox; ///< fractions of the captured image (0 to 1); origin bottom-left, y upwards

    bool operator==(const TextBlock &) const = default;
};

} // namespace lucentra
