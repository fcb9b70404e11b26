#include "ScreenMemory.h"

#include "MovedLines.h"
#include "PictureChange.h"

namespace lucentra {

namespace {

/// How far beside a line that has moved what replaces it counts as a part of the movement. Pixels.
constexpr int besideLine = 2 * tileSide;

/// A block where its lines are now; nullopt if one of them has left the picture, or they have moved apart.
std::optional<ShownBlock> movedBlock(ShownBlock shown, const QList<TextLine> &lines,
                                     const QList<std::optional<int>> &shifts, int height)
{
    std::optional<int> common;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!shown.block.normBox.unitRect().contains(lines[i].normBox.unitRect().center()))
            continue;
        if (!shifts[i] || common.value_or(*shifts[i]) != *shifts[i])
            return std::nullopt;
        common = shifts[i];
    }
    shown.block.normBox.y -= double(common.value_or(0)) / height;
    return shown;
}

} // namespace

std::optional<ScreenMemory> ScreenMemory::movedOn(const QImage &now) const
{
    const QList<std::optional<int>> shifts = shiftsOf(screen, now);
    if (!haveMoved(shifts))
        return std::nullopt;
    ScreenMemory moved{movedReading(screen, now, shifts), {}};
    for (const ShownBlock &shown : blocks) {
        if (const auto block = movedBlock(shown, screen.lines, shifts, now.height()))
            moved.blocks.append(*block);
    }
    return moved;
}

FollowedLines ScreenMemory::comparedWith(const ScreenMemory &former, const QImage &now) const
{
    FollowedLines followed{.lines = placesOf(screen.lines, now.size()),
                           .unread = changedTiles(screen.picture, now, now.rect()) | screen.preliminary,
                           .areTextsLost = blocks.size() < former.blocks.size()};
    for (const QRect &line : differingLines(former.screen.lines, screen.lines, now.size()))
        followed.uncovered |= followed.unread & line.adjusted(-besideLine, 0, besideLine, 0);
    return followed;
}

QList<TextBlock> ScreenMemory::textBlocks() const
{
    QList<TextBlock> texts;
    for (const ShownBlock &each : blocks)
        texts.append(each.block);
    return texts;
}

QStringList ScreenMemory::translations() const
{
    QStringList translations;
    for (const ShownBlock &each : blocks)
        translations.append(each.translation);
    return translations;
}

} // namespace lucentra
