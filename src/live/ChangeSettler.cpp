#include "ChangeSettler.h"

#include <QHash>

#include <algorithm>
#include <cstring>
#include <utility>

namespace lucentra {

namespace {

/// Tiles whose time comes within this are looked at together.
constexpr ChangeSettler::Time together{20};
/// Looks that follow each other within this are quick ones; after so many, the tile counts as restless.
constexpr ChangeSettler::Time quick{1000};
constexpr int manyQuickLooks = 5;
/// After so many returns to the same state it blinks.
constexpr int manyReturns = 3;
/// The pause after the second look in a row that found nothing new; it doubles with each one.
constexpr ChangeSettler::Time vainPause{400};
constexpr int mostVainLooks = 4;
/// After so long without a look, looks in vain are forgotten.
constexpr ChangeSettler::Time forgiven{10'000};
/// The share of a line in which its letters may seem to have changed because of what is behind them.
constexpr double smallShare = 0.3;
/// Looks that may wait happen at multiples of this, so that those at several tiles are one.
constexpr ChangeSettler::Time beat{800};

ChangeSettler::Time nextBeat(ChangeSettler::Time time)
{
    return (time / beat + 1) * beat;
}

/// Whether a tile has a good part of a line of text in it, rather than its margin.
bool isIn(const QRect &line, const QRect &tile)
{
    const QRect shared = line & tile;
    return shared.width() >= tileSide / 8 && 2 * shared.height() >= std::min(tileSide, line.height());
}

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
    if (tile.isRunning)
        return (isWritten(tile) ? tile.stood : tile.moved) + calmTime;
    const Time earliest =
        tile.vainLooks < 2 ? Time(0) : nextBeat(tile.looked + vainPause * (1 << (tile.vainLooks - 2)));
    Time due = tile.isRestless ? tile.moved + calmTime : std::min(tile.last + settleTime, tile.first + longestWait);
    if (tile.isStanding)
        due = std::min(due, tile.stood + settleTime);
    due = std::max(due, tile.isMinor ? std::max(earliest, nextBeat(tile.looked + vainPause)) : earliest);
    return tile.isRestless ? std::min(due, nextBeat(tile.looked + (tile.line >= 0 ? oftenEnough : rarely))) : due;
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
            if (areSameShapes(m_compared, picture, rect))
                continue;
            copyPixels(m_compared, picture, rect);
            change(m_tiles[index], rect, now);
        }
    }
}

void ChangeSettler::change(Tile &tile, const QRect &rect, Time now)
{
    tile.hasMoved = true;
    tile.isMinor = false;
    tile.moved = now;
    if (tile.isBlinking) {
        const size_t state = stateOf(rect);
        if (state == tile.state || state == tile.stateBefore)
            return;
        tile.isBlinking = false;
        tile.returns = 0;
    }
    if (!tile.isWaiting) {
        tile.isWaiting = true;
        tile.first = now;
        if (now - tile.looked > forgiven)
            tile.vainLooks = 0;
    }
    tile.last = now;
    const TileEdges edges = edgesOfTile(m_picture, rect);
    const TileEdges standing = commonEdges(tile.standing, edges);
    const bool stands = tile.isStanding && isOtherWriting(tile.seen.edges, standing);
    tile.standing = stands ? standing : edges;
    if (!stands)
        tile.stood = now;
    tile.isStanding = stands || isOtherWriting(tile.seen.edges, edges);
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

/// Does something with each tile and the one to the left of it, and then with each and the one to the right.
void ChangeSettler::withNeighbours(const std::function<void(Tile &, const Tile &)> &work)
{
    const auto isFirst = [this](size_t index) { return index % size_t(m_columns) == 0; };
    for (size_t i = 1; i < m_tiles.size(); ++i) {
        if (!isFirst(i))
            work(m_tiles[i], m_tiles[i - 1]);
    }
    for (size_t i = m_tiles.size(); i-- > 1;) {
        if (!isFirst(i))
            work(m_tiles[i - 1], m_tiles[i]);
    }
}

/// Writing side by side has been standing for as long as the first of it. Where the picture behind it moves, that is
/// noticed later.
void ChangeSettler::joinStanding()
{
    withNeighbours([](Tile &tile, const Tile &beside) {
        if (beside.isStanding && isWritten(tile))
            tile.stood = std::min(tile.stood, beside.stood);
    });
}

/// What moves beside a line that runs past is a part of it.
void ChangeSettler::spreadRunning(Time now)
{
    const auto isMoving = [now](const Tile &tile) {
        return tile.hasMoved && now - tile.moved < calmTime && !(isWritten(tile) && now - tile.stood >= calmTime);
    };
    for (Tile &tile : m_tiles)
        tile.isRunning = tile.isRunning && isMoving(tile);
    withNeighbours([&](Tile &tile, const Tile &beside) {
        tile.isRunning = tile.isRunning || (beside.isRunning && isMoving(tile));
    });
}

ChangeSettler::Due ChangeSettler::take(Time now)
{
    Due due;
    const auto next = nextDue();
    if (!next || *next > now)
        return due;
    joinStanding();
    spreadRunning(now);
    const std::vector<double> shares = changedShares();
    QRegion different;
    QRegion around; // what may hold a line, with its neighbours
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const auto time = dueTime(m_tiles[i]);
        const QRect rect = rectOf(i);
        if (now - m_tiles[i].last < settleTime && isWritten(m_tiles[i]))
            due.written |= rect;
        if (m_tiles[i].isRunning)
            due.running |= rect;
        if (!time || *time > now + together)
            continue;
        Tile &tile = m_tiles[i];
        const bool mayHaveText = isReadable(tile, rect, now);
        if (tile.line >= 0 && !mayHaveText) {
            tile.hasMoved = tile.isWaiting = tile.isStanding = false;
            continue;
        }
        if (isMinor(tile, tile.line >= 0 ? shares[size_t(tile.line)] : 1, now)) {
            tile.isMinor = true;
            continue;
        }
        if (!isDifferent(tile, rect, now, due))
            continue;
        if (isBesideChange(i, now))
            due.unsettled |= rect;
        different |= rect;
        if (mayHaveText)
            around |= rect.adjusted(-tileSide, -tileSide, tileSide, tileSide);
    }
    due.changed = different & around;
    return due;
}

/// Whether something to the left or the right is changing, as where a text is being written letter by letter.
bool ChangeSettler::isBesideChange(size_t index, Time now) const
{
    const auto isChanging = [&](size_t other) {
        const Tile &tile = m_tiles[other];
        return tile.hasMoved && !tile.isRestless && !tile.isBlinking && now - tile.last + together < settleTime;
    };
    const size_t columns(m_columns);
    return (index % columns > 0 && isChanging(index - 1)) || ((index + 1) % columns > 0 && isChanging(index + 1));
}

bool ChangeSettler::hasStood(const Tile &tile, Time now)
{
    return tile.isStanding && now - tile.stood + together >= settleTime;
}

/// Whether something can be read in a tile that is due, or could be at the last look, and isn't the same.
bool ChangeSettler::isReadable(const Tile &tile, const QRect &rect, Time now) const
{
    if (tile.state == 0)
        return true;
    if (tile.line >= 0)
        return lettersOf(tile, rect) != Letters::Same;
    if (now - tile.last + together >= settleTime)
        return mayHoldWriting(m_picture, rect);
    return hasWriting(hasStood(tile, now) ? tile.standing : edgesOfTile(m_picture, rect));
}

/// The share of each line's tiles in which its letters aren't all there any more.
std::vector<double> ChangeSettler::changedShares() const
{
    std::vector<double> all(size_t(m_lines), 0);
    std::vector<double> changed(all);
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const Tile &tile = m_tiles[i];
        if (tile.line < 0)
            continue;
        ++all[size_t(tile.line)];
        changed[size_t(tile.line)] += tile.hasMoved && lettersOf(tile, rectOf(i)) == Letters::Other;
    }
    std::transform(changed.begin(), changed.end(), all.begin(), changed.begin(), std::divides<>());
    return changed;
}

/// Whether what has changed in a tile with a line is rather a picture that moves behind it, which only now and then
/// hides another letter: nothing rests there, and the letters are others in a small part of the line only.
bool ChangeSettler::isMinor(const Tile &tile, double changedShare, Time now)
{
    const bool isMoving = now - tile.last + together < settleTime && !hasStood(tile, now);
    return tile.line >= 0 && tile.state != 0 && isMoving && changedShare < smallShare &&
           now < nextBeat(tile.looked + vainPause);
}

/// Counts a look at a tile. Returns false if it shows what it did at the last one.
bool ChangeSettler::isDifferent(Tile &tile, const QRect &rect, Time now, Due &due)
{
    const bool isAtRest = now - tile.last + together >= settleTime;
    const bool stands = hasStood(tile, now);
    const bool isUnsettled = !isAtRest && !stands && !tile.isRestless;
    if (isAtRest || stands)
        tile.seen = writingOfTile(m_picture, rect);
    if (stands && !isAtRest)
        tile.seen = {tile.standing, commonEdges(tile.standing, tile.seen.strongest)};
    tile.hasMoved = tile.isWaiting = tile.isStanding = tile.isMinor = false;
    tile.isRestless = tile.isRestless && now - tile.moved + together < calmTime;
    const size_t state = stateOf(rect);
    if (state == tile.state)
        return false;
    tile.returns = state == tile.stateBefore ? tile.returns + 1 : 0;
    tile.isBlinking = tile.returns >= manyReturns;
    tile.quickLooks = now - tile.looked < quick ? tile.quickLooks + 1 : 0;
    tile.isRestless = !tile.isBlinking && (tile.isRestless || isUnsettled || tile.quickLooks >= manyQuickLooks);
    tile.stateBefore = std::exchange(tile.state, state);
    tile.looked = now;
    if ((isAtRest || stands) && tile.stateBefore != 0) // not if it was put back
        tile.vainLooks = std::min(tile.vainLooks + 1, mostVainLooks); // until something new is found
    if (isUnsettled)
        due.unsettled |= rect;
    if (!isAtRest && (!stands || tile.line >= 0))
        due.moving |= rect;
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
        tile.isBlinking = tile.isStanding = tile.isMinor = false;
        tile.last = tile.moved = now;
        tile.state = 0; // whatever it shows is new
    }
}

void ChangeSettler::linesMoved(const QRegion &unread, const QRegion &uncovered, Time now)
{
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const QRect rect = rectOf(i);
        if (uncovered.intersects(rect))
            m_tiles[i] = {.isWaiting = true, .hasMoved = true, .first = now, .last = now, .moved = now};
        else if (m_tiles[i].hasMoved && !unread.intersects(rect))
            m_tiles[i] = {.looked = now, .state = stateOf(rect), .seen = writingOfTile(m_picture, rect)};
    }
}

void ChangeSettler::found(const QList<QRect> &lines, const QList<QRect> &news, const QRegion &running)
{
    const auto indexOf = [](const QRect &tile, const QList<QRect> &some) {
        const auto line = std::find_if(some.begin(), some.end(), [&](const QRect &each) { return isIn(each, tile); });
        return line == some.end() ? -1 : int(line - some.begin());
    };
    m_lines = int(lines.size());
    for (size_t i = 0; i < m_tiles.size(); ++i) {
        const QRect rect = rectOf(i);
        Tile &tile = m_tiles[i];
        tile.line = indexOf(rect, lines);
        tile.isRunning = tile.isRunning || running.intersects(rect);
        if (indexOf(rect, news) >= 0)
            tile.vainLooks = 0;
    }
}

} // namespace lucentra
