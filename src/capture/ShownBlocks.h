#pragma once

#include "TextBlock.h"

#include <QList>
#include <QRegion>
#include <QString>

#include <chrono>
#include <optional>

namespace lucentra {

/// A text on the screen with its translation.
struct ShownBlock
{
    TextBlock block;
    QString translation; ///< what is shown; an older text's as long as this one waits
    bool isTranslated = false;
    // Of a text that waits, on the clock of the one who looks:
    std::chrono::milliseconds begun{0};   ///< when it began to be written
    std::chrono::milliseconds changed{0}; ///< when it was last found changed
};

/// What a look at the screen has found out about the texts there.
struct BlockChange
{
    QList<ShownBlock> blocks;
    QList<qsizetype> wanted; ///< the blocks to translate now
    /// When to look again although nothing changes, because some texts wait; nullopt if none does.
    std::optional<std::chrono::milliseconds> again;
};

/// Whether a text is a shorter one that has been written on. The last letters of the shorter one may be misread.
bool continues(const QString &text, const QString &beginning);

/// Finds out which texts are translated already and which ones must be. A text that is being written waits until it has
/// been the same for a while, or at most a second. It is being written if it begins with the text that was at its
/// place, or in an area that doesn't rest: `unsettled`, in pixels of a picture of that size.
BlockChange compareBlocks(const QList<ShownBlock> &former, const QList<TextBlock> &now, const QSize &size,
                          const QRegion &unsettled, std::chrono::milliseconds time);

} // namespace lucentra
