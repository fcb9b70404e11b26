#pragma once

#include "PictureChange.h"

#include <QImage>
#include <QRegion>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace lucentra {

/// Finds out, from one picture of the screen to the next, which parts have changed and are to be looked at: those that
/// have come to rest after a change, or have been changing for so long that waiting makes no sense. A brightness that
/// changes evenly is no change, and where neither a line was nor anything could be one, there is nothing to look at.
///
/// It works by tiles, so that a part that never rests holds no other part up. Such tiles are learned. There, only edges
/// that stand still while the picture around them moves are taken for writing, and only other writing counts as a
/// change. Where that turns out to be no text, it counts more rarely. What blinks between two states is learned, too.
class ChangeSettler
{
public:
    using Time = std::chrono::milliseconds;

    /// How long a part, or the writing before a moving picture, must be at rest.
    static constexpr Time settleTime{80};
    /// A part is looked at so long after its first change, at rest or not.
    static constexpr Time longestWait{400};
    /// How long a part that never rested must be at rest to count as any other.
    static constexpr Time calmTime{250};
    /// The time between looks at what moves and was a line at the last one, or wasn't.
    static constexpr Time oftenEnough{2000};
    static constexpr Time rarely{8000};
    /// How long what blinks must be at rest.
    static constexpr Time afterBlinking{3000};

    /// Parts to look at, in pixels.
    struct Due
    {
        QRegion changed;
        QRegion unsettled; ///< the part of it that hasn't come to rest, or has a neighbour on its row that hasn't
        QRegion moving;    ///< the part of it that doesn't rest, unless new writing stands where no line was
        QRegion running;   ///< where lines run past, due or not
        QRegion written;   ///< where new writing stands before a moving picture, due or not
    };

    /// Forgets everything: all of the next picture is due once it rests.
    void reset() { *this = ChangeSettler(); }
    /// Takes the next picture (RGB32). All that differs from the one before it is inside `damage`.
    void add(const QImage &picture, const QRect &damage, Time now);
    const QImage &picture() const { return m_picture; }

    /// When something is due, if no picture comes until then; nullopt if nothing waits.
    std::optional<Time> nextDue() const;
    /// What is due now. The caller looks at it.
    Due take(Time now);
    /// Makes an area due again, since the look at it came to nothing.
    void putBack(const QRegion &region, Time now);
    /// Lines have moved on the picture that was added last. Changes outside of `unread` are done with, since what has come
    /// there was read at another place. What `uncovered` touches is due again, even if it returns to a former state.
    void linesMoved(const QRegion &unread, const QRegion &uncovered, Time now);
    /// Says where the lines of text are, after a look, and which have come, gone or changed. What runs past isn't
    /// looked at until it rests.
    void found(const QList<QRect> &lines, const QList<QRect> &news, const QRegion &running = {});

private:
    struct Tile
    {
        bool isWaiting = false;  ///< something has changed that counts
        bool hasMoved = false;   ///< something has changed since the last look
        bool isRestless = false; ///< it moves without end
        bool isRunning = false;  ///< and lines run past
        bool isBlinking = false;
        bool isStanding = false; ///< other writing than at the last look may be there
        bool isMinor = false;    ///< what has changed beside the letters of its line may wait
        int line = -1;           ///< the line of text that was there at the last look
        int quickLooks = 0;      ///< looks in a row with little time between
        int vainLooks = 0;       ///< looks in a row, at what stood still, that found nothing new
        int returns = 0;         ///< how often in a row it has returned to the state before the last one
        Time first{0};           ///< when it began to wait
        Time last{0};            ///< the last change that counts
        Time stood{0};           ///< since when other writing has been standing
        Time moved{0};           ///< the last change of any kind
        Time looked{0};
        size_t state = 0;        ///< a hash of its pixels at the last look, 0 if it must be looked at in any case,
        size_t stateBefore = 0;  ///< and at the one before
        TileEdges standing{};    ///< its edges that have been there since then
        TileWriting seen{};      ///< what was written in it at the last look
    };

    static std::optional<Time> dueTime(const Tile &tile);
    static bool isWritten(const Tile &tile) { return tile.isStanding && hasWriting(tile.standing); }
    static bool hasStood(const Tile &tile, Time now);
    bool isBesideChange(size_t index, Time now) const;
    QRect rectOf(size_t index) const;
    size_t stateOf(const QRect &rect) const;
    void change(Tile &tile, const QRect &rect, Time now);
    void joinStanding();
    void spreadRunning(Time now);
    void withNeighbours(const std::function<void(Tile &, const Tile &)> &work);
    bool isReadable(const Tile &tile, const QRect &rect, Time now) const;
    Letters lettersOf(const Tile &tile, const QRect &rect) const { return lettersInTile(tile.seen, m_picture, rect); }
    std::vector<double> changedShares() const;
    static bool isMinor(const Tile &tile, double changedShare, Time now);
    bool isDifferent(Tile &tile, const QRect &rect, Time now, Due &due);

    QImage m_picture;
    QImage m_compared; ///< each tile as it was when its shapes last changed; so slow changes are seen, too
    int m_columns = 0;
    int m_lines = 0;
    std::vector<Tile> m_tiles;
};

} // namespace lucentra
