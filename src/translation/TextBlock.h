#pragma once

#include "NormBox.h"

#include <QList>
#include <QString>

namespace lucentra {

/// A text to translate: one or more lines of the captured image. Blocks keep the order of reading and are identified by
/// position.
struct TextBlock
{
    QString text;          ///< exactly as recognized
    NormBox normBox;       ///< in the captured image
    double lineHeight = 0; ///< of one of its lines, a fraction of the image's height; 0 means that of the box
    int lineCount = 1;
    double lineDistance = 0; ///< between its lines' centres, a fraction of the image's height; 0 for a single line
    Qt::Alignment alignment = Qt::AlignLeft; ///< of its lines to each other

    bool operator==(const TextBlock &) const = default;
};

} // namespace lucentra
