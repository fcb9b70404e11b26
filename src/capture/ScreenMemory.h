#pragma once

#include "ScreenReading.h"
#include "ShownBlocks.h"

#include <QStringList>

#include <optional>

namespace lucentra {

/// What is known of a picture on which lines have moved. Pixels.
struct FollowedLines
{
    QList<QRect> lines; ///< the places of all lines of text
    QRegion unread;     ///< all that isn't as it was read, here or elsewhere
    QRegion uncovered;  ///< the part of it where lines were or are that have moved or left the picture, and beside them
    bool areTextsLost = false; ///< some have left the picture, at least in part; the rest has no translation
};

/// What was seen on the screen, and the translations of it that are shown.
struct ScreenMemory
{
    ScreenReading screen;
    QList<ShownBlock> blocks;

    /// The same after lines have been scrolled: where they are on a later picture (RGB32). What has left it is forgotten.
    /// Returns nullopt if nothing has moved.
    std::optional<ScreenMemory> movedOn(const QImage &now) const;
    /// What `movedOn` has done to `former` on that picture.
    FollowedLines comparedWith(const ScreenMemory &former, const QImage &now) const;

    QList<TextBlock> textBlocks() const;
    QStringList translations() const;
};

} // namespace lucentra
