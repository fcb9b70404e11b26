#pragma once

#include "ScreenReading.h"
#include "ShownBlocks.h"

#include <QStringList>

#include <optional>

namespace lucentra {

/// What was seen on the screen, and the translations of it that are shown.
struct ScreenMemory
{
    ScreenReading screen;
    QList<ShownBlock> blocks;

    /// The same after lines have been scrolled: where they are on a later picture (RGB32). What has left it is forgotten.
    /// Returns nullopt if nothing has moved.
    std::optional<ScreenMemory> movedOn(const QImage &now) const;

    QList<TextBlock> textBlocks() const;
    QStringList translations() const;
};

} // namespace lucentra
