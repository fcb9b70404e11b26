#include "ChangeSettler.h"

#include <QHash>

#include <algorithm>
#include <cstring>

namespace lucentra {

namespace {

/// Tiles whose time comes within this are looked at together.
constexpr ChangeSettler::Time together{20};
/// Looks that follow each other within this are quick ones; after so many, the tile counts as restless.
constexpr ChangeSettler::Time quick{1000};
constexpr int manyQuickLooks = 5;
/// After so many returns to the same state it blinks.
constexpr int manyReturns = 3;
constexpr int mostVainLooks = 3; // 400 ms, doubled twice, are 1,600

void copyPixels(QImage &to, const QImage &from, const QRect &rect)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        std::memcpy(to.scanLine(y) + rect.left() * qsizetype(sizeof(QRgb)),
                    from.constScanLine(y) + rect.left() * qsizetype(sizeof(QRgb)),
                    size_t(rect.width()) * sizeof(QRgb));
}

} // namespace

std::optional<ChangeSettler::Time> ChangeSettler::dueTime(const Tile &tile)
{
    if (!tile.hasMoved)
        return std::nullopt;
    if (tile.isBlinking)
        return tile.moved + afterBlinking;
    if (!tile.isRestless)
        return std::min(tile.last + settleTime, tile.first + longestWait);
    Time due = std::min(tile.moved + calmTime, tile.looked + rarely);
    if (tile.isWaiting) {
        const Time pause = tile.vainLooks > 0 ? longestWait * (1 << (tile.vainLooks - 1)) : Time(0);
        due = std::min(due, std::max(std::min(tile.last + writingTime, tile.first + longestWait), tile.looked + pause));
    }
    return due;
}

QRect ChangeSettler::rectOf(size_t index) const
{
    return QRect(int(index) % m_columns * tileSide, int(index) / m_columns * tileSide, tileSide, tileSide) &
           m_picture.rect();
}

size_t ChangeSettler::stateOf(const QRect &rect) const
{
    size_t state = 1;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        state = qHashBits(m_picture.constScanLine(y) + rect.left() * qsizetype(sizeof(QRgb)),
                          size_t(rect.width()) * sizeof(QRgb), state);
    return state;
}

void ChangeSettler::add(const QImage &picture, const QRect &damage, Time now)
{
    const bool isNew = picture.size() != m_picture.size();
    m_picture = picture;
    if (isNew) {
        m_columns = (picture.width() + tileSide - 1) / tileSide;
        m_tiles.assign(size_t(m_columns) * size_t((picture.height() + tileSide - 1) / tileSide), {});
        m_compared = picture.copy();
        return putBack(picture.rect(), now);
    }
    const QRect looked = damage & picture.rect();
    for (int y = looked.top() / tileSide; y * tileSide <= looked.bottom(); ++y) {
        for (int x = looked.left() / tileSide; x * tileSide <= looked.right(); ++x) {
            const size_t index = size_t(y) * size_t(m_columns) + size_t(x);
            const QRect rect = rectOf(index);
            if (isSamePicture(m_compared, picture, rect))
                continue;
            copyPixels(m_compared, picture, rect);
            change(m_tiles[index], rect, now);
        }
    }
}

void ChangeSettler::change(Tile &tile, const QRect &rect, Time now)
{
    tile.hasMoved = true;
    tile.moved = now;
    if (tile.isBlinking) {
        const size_t state = stateOf(rect);
        if (state == tile.state || state == tile.stateBefore)
            return;
        tile.isBlinking = false;
        tile.returns = 0;
    }
    const auto count = [&] {
        if (!tile.isWaiting)
            tile.first = now;
        tile.isWaiting = true;
        tile.last = now;
    };
    if (!tile.isRestless)
        return count();
    const TileEdges before = tile.edges;
    tile.edges = edgesOfTile(m_picture, rect);
    if (!isOtherWriting(tile.seenEdges, tile.edges))
        tile.isWaiting = false;
    else if (!tile.isWaiting || isOtherWriting(before, tile.edges))
        count();
}

std::optional<ChangeSettler::Time> ChangeSettler::nextDue() const
{
    std::optional<Time> next;
    for (const Tile &tile : m_tiles) {
        if (const auto due = dueTime(tile))
            next = std::min(next.value_or(*due), *due);
    }
    return next;
}

ChangeSettler::Due ChangeSettler::take(Time now)
{
    Due due;
    const auto next = nextDue();
    if (!next || *next > now)
        return due;
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const auto time = dueTime(m_tiles[i]);
        const QRect rect = rectOf(i);
        if (time && *time <= now + together && look(m_tiles[i], rect, now, due))
            due.changed |= rect;
    }
    return due;
}

/// Prepares a look at a tile. Returns false if there is nothing new to see.
bool ChangeSettler::look(Tile &tile, const QRect &rect, Time now, Due &due)
{
    const bool isCalm = now - tile.moved + together >= calmTime;
    const bool isUnsettled = !tile.isRestless && now - tile.last + together < settleTime;
    tile.wasWriting = tile.isRestless && tile.isWaiting && !isCalm;
    tile.hasMoved = false;
    tile.isWaiting = false;
    if (tile.isRestless && isCalm) {
        tile.isRestless = false;
        tile.vainLooks = tile.quickLooks = 0;
    }
    const size_t state = stateOf(rect);
    if (state == tile.state)
        return false;
    tile.returns = state == tile.stateBefore ? tile.returns + 1 : 0;
    tile.isBlinking = tile.returns >= manyReturns;
    tile.quickLooks = now - tile.looked < quick ? tile.quickLooks + 1 : 0;
    tile.isRestless = !tile.isBlinking && (tile.isRestless || isUnsettled || tile.quickLooks >= manyQuickLooks);
    tile.stateBefore = tile.state;
    tile.state = state;
    tile.looked = now;
    if (isUnsettled)
        due.unsettled |= rect;
    if (tile.isRestless)
        tile.seenEdges = tile.edges = edgesOfTile(m_picture, rect);
    return true;
}

void ChangeSettler::putBack(const QRegion &region, Time now)
{
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        if (!region.intersects(rectOf(i)))
            continue;
        Tile &tile = m_tiles[i];
        if (!tile.isWaiting)
            tile.first = now;
        tile.isWaiting = tile.hasMoved = true;
        tile.isBlinking = false;
        tile.last = tile.moved = now;
        tile.state = 0; // whatever it shows is new
    }
}

void ChangeSettler::found(const QRegion &looked, const QList<QRect> &lines)
{
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const QRect rect = rectOf(i);
        Tile &tile = m_tiles[i];
        if (!looked.intersects(rect))
            continue;
        const bool hasLine =
            std::any_of(lines.begin(), lines.end(), [&](const QRect &line) { return line.intersects(rect); });
        if (hasLine)
            tile.vainLooks = 0;
        else if (tile.wasWriting)
            tile.vainLooks = std::min(tile.vainLooks + 1, mostVainLooks);
    }
}

} // namespace lucentra
