#include "ScreenReading.h"

#include "MovedLines.h"
#include "PictureChange.h"
#include "ShownBlocks.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace lucentra {

namespace {

/// How far around what has changed is read, in pixels: about a line's height.
constexpr int surroundings = 24;
/// How far a part is widened if a line is cut off at its side, or at its top or bottom, and how often. Pixels.
constexpr int widening = 240;
constexpr int heightening = 32;
/// A line that comes so close to the top or bottom of a part may be cut off there. Pixels.
constexpr int cutDistance = 2;
constexpr int mostWidenings = 3;
/// The share of the picture from which reading all of it at once is cheaper.
constexpr double wholeShare = 0.75;
/// The share of a line's height by which its edges may differ in two readings of the same line.
constexpr double sameEdges = 0.25;
/// The share of a line's height that is less than the distance between two words.
constexpr double letterDistance = 0.25;
/// Shorter texts that differ by a sign are different texts.
constexpr qsizetype leastSimilar = 4;
/// So many letters that two lines share show that a text has moved.
constexpr qsizetype leastRunning = 6;

double areaOf(const QRect &rect)
{
    return rect.isEmpty() ? 0 : double(rect.width()) * rect.height();
}

bool isSameBox(const QRect &a, const QRect &b)
{
    const int tolerance = std::max(2, int(sameEdges * a.height()));
    const auto near = [tolerance](int x, int y) { return std::abs(x - y) <= tolerance; };
    return near(a.left(), b.left()) && near(a.right(), b.right()) && near(a.top(), b.top()) &&
           near(a.bottom(), b.bottom());
}

/// Whether the texts differ by one sign at most: another, a missing or an additional one.
bool isNearlySame(const QString &a, const QString &b)
{
    if (std::min(a.size(), b.size()) < leastSimilar || std::abs(a.size() - b.size()) > 1)
        return false;
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto same = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin();
    return (left - a.begin()) + same >= std::max(a.size(), b.size()) - 1;
}

/// The longest text that two texts have in common.
struct CommonText
{
    qsizetype length = 0;
    qsizetype first = 0; ///< where it begins in the one
    qsizetype second = 0;
};

CommonText commonText(const QString &a, const QString &b)
{
    CommonText best;
    for (qsizetype i = 0; i < a.size(); ++i) {
        for (qsizetype j = 0; j < b.size(); ++j) {
            const qsizetype length =
                std::mismatch(a.begin() + i, a.end(), b.begin() + j, b.end()).first - a.begin() - i;
            if (length > best.length)
                best = {length, i, j};
        }
    }
    return best;
}

/// Whether `line` is the whole or a part of `former`, moved sideways within its row.
bool hasRun(const TextLine &line, const TextLine &former, const QSize &size)
{
    const QRect now = pixelsOf(line.normBox, size);
    const QRect before = pixelsOf(former.normBox, size);
    if (std::abs(now.center().y() - before.center().y()) > before.height() / 2)
        return false;
    const CommonText common = commonText(line.text, former.text);
    const auto placeOf = [](const QRect &box, qsizetype index, qsizetype length) {
        return box.left() + double(box.width()) * double(index) / double(length);
    };
    return common.length >= leastRunning &&
           std::abs(placeOf(now, common.first, line.text.size()) - placeOf(before, common.second, former.text.size())) >
               before.height();
}

/// The tiles that a rectangle touches.
QRect tilesOf(const QRect &rect)
{
    const auto begin = [](int value) { return value / tileSide * tileSide; };
    return {QPoint(begin(rect.left()), begin(rect.top())),
            QPoint(begin(rect.right()) + tileSide - 1, begin(rect.bottom()) + tileSide - 1)};
}

/// Joins rectangles that touch, until none do.
QList<QRect> joined(QList<QRect> rects)
{
    for (qsizetype i = 0; i < rects.size(); ++i) {
        for (qsizetype j = i + 1; j < rects.size(); ++j) {
            if (rects[i].intersects(rects[j])) {
                rects[i] |= rects.takeAt(j);
                i = -1;
                break;
            }
        }
    }
    return rects;
}

class SecondReading
{
public:
    SecondReading(ScreenReading former, const QImage &picture, const QRegion &changed)
        : m_former(std::move(former))
        , m_picture(picture)
        , m_changed(changed)
        , m_goesOn(size_t(m_former.lines.size()))
    {
        for (const TextLine &line : std::as_const(m_former.lines)) {
            const QRect box = pixelsOf(line.normBox, picture.size());
            m_boxes.append(box);
            m_isKept.push_back(!changed.intersects(box) || (isSamePicture(m_former.picture, picture, box) &&
                                                            !m_former.preliminary.intersects(box)));
        }
    }

    ScreenReading read(const ReadPart &readPart)
    {
        for (const QRect &part : parts())
            readWidely(part, readPart);
        for (qsizetype i = 0; i < m_former.lines.size(); ++i) {
            if (!m_isKept[size_t(i)])
                m_isKept[size_t(i)] = !replace(m_former.lines[i], m_boxes[i]);
        }
        ScreenReading reading{.picture = m_former.picture, .preliminary = m_former.preliminary - m_changed};
        copyChanged(reading.picture);
        for (qsizetype i = 0; i < m_former.lines.size(); ++i) {
            if (!m_isKept[size_t(i)])
                continue;
            reading.lines.append(m_former.lines[i]);
            reading.partial |= m_goesOn[size_t(i)];
        }
        for (const TextLine &line : std::as_const(m_found))
            insert(reading.lines, line);
        return reading;
    }

private:
    /// What hasn't been looked at remains as it was, so that it is still known to differ.
    void copyChanged(QImage &picture) const
    {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect &rect : m_changed)
            painter.drawImage(rect.topLeft(), m_picture, rect);
    }

    QList<QRect> parts() const
    {
        QList<QRect> rects;
        for (const QRect &rect : m_changed)
            rects.append(rect.adjusted(-surroundings, -surroundings / 2, surroundings, surroundings / 2) &
                         m_picture.rect());
        for (qsizetype i = 0; i < m_boxes.size(); ++i) {
            if (!m_isKept[size_t(i)]) // a line has room around it, or it isn't found
                rects.append(m_boxes[i].adjusted(-surroundings, -surroundings / 2, surroundings, surroundings / 2) &
                             m_picture.rect());
        }
        rects = joined(rects);
        double area = 0;
        for (const QRect &rect : std::as_const(rects))
            area += areaOf(rect);
        return area > wholeShare * areaOf(m_picture.rect()) ? QList{m_picture.rect()} : rects;
    }

    /// Reads a part, and more of it if a line that isn't known goes on beside it.
    void readWidely(QRect part, const ReadPart &readPart)
    {
        for (int i = 0;; ++i) {
            QList<TextLine> found;
            for (const TextLine &line : readPart(part)) {
                noteLinesThatGoOn(line, part);
                if (!isKnown(line))
                    found.append(line);
            }
            QRect wider = part;
            for (const TextLine &line : std::as_const(found)) {
                const QRect box = pixelsOf(line.normBox, m_picture.size());
                const int margin = std::max(2, box.height() / 3);
                if (box.left() <= part.left() + margin)
                    wider.setLeft(std::max(0, part.left() - widening));
                if (box.right() >= part.right() - margin)
                    wider.setRight(std::min(m_picture.width() - 1, part.right() + widening));
                if (box.top() <= part.top() + cutDistance)
                    wider.setTop(std::max(0, part.top() - heightening));
                if (box.bottom() >= part.bottom() - cutDistance)
                    wider.setBottom(std::min(m_picture.height() - 1, part.bottom() + heightening));
            }
            if (wider == part || i == mostWidenings) {
                m_found += found;
                return;
            }
            part = wider;
        }
    }

    /// Notes the kept lines that end where `found` begins or goes on, unless all of them was read. What blinks or turns
    /// beside a line looks the same, so they aren't read whole at once.
    void noteLinesThatGoOn(const TextLine &found, const QRect &part)
    {
        const QRect box = pixelsOf(found.normBox, m_picture.size());
        for (qsizetype i = 0; i < m_boxes.size(); ++i) {
            const QRect &kept = m_boxes[i];
            const int distance = std::max(2, int(letterDistance * kept.height()));
            const bool isBeside = std::abs(box.center().y() - kept.center().y()) < kept.height() / 2 &&
                                  box.left() <= kept.right() + distance && box.right() >= kept.left() - distance;
            const bool goesOn = box.right() > kept.right() + distance || box.left() < kept.left() - distance;
            if (m_isKept[size_t(i)] && isBeside && goesOn && !part.contains(kept))
                m_goesOn[size_t(i)] |= kept | box;
        }
    }

    /// Whether a line is at the place of another one. Kept lines aren't kept any longer if it continues one of them.
    bool isKnown(const TextLine &found)
    {
        const QRect box = pixelsOf(found.normBox, m_picture.size());
        std::vector<size_t> there;
        bool goesOn = false;
        for (qsizetype i = 0; i < m_boxes.size(); ++i) {
            if (!m_isKept[size_t(i)] || !isSamePlace(m_boxes[i], box))
                continue;
            there.push_back(size_t(i));
            goesOn = goesOn || (!isSameBox(m_boxes[i], box) && continues(found.text, m_former.lines[i].text));
        }
        if (!there.empty() && !goesOn)
            return true;
        for (const size_t i : there)
            m_isKept[i] = false;
        return std::any_of(m_found.begin(), m_found.end(), [&](const TextLine &line) { // widened parts may overlap
            return isSamePlace(pixelsOf(line.normBox, m_picture.size()), box);
        });
    }

    /// Whether a former line is gone, or another one is at its place. Otherwise nothing new is left there.
    bool replace(const TextLine &line, const QRect &box)
    {
        const auto other = std::find_if(m_found.begin(), m_found.end(), [&](const TextLine &each) {
            return isSamePlace(pixelsOf(each.normBox, m_picture.size()), box);
        });
        if (other == m_found.end())
            return !isSameWriting(m_former.picture, m_picture, box);
        const bool isSame = other->text == line.text;
        if (!isSame && !isNearlySame(other->text, line.text))
            return true;
        if (isSameBox(pixelsOf(other->normBox, m_picture.size()), box))
            other->normBox = line.normBox; // a pixel more or less is no reason to move
        if (isSame || !isSameWriting(m_former.picture, m_picture, box))
            return true;
        m_found.erase(other);
        return false;
    }

    /// Puts a line behind the one above it, or else before the one below it.
    void insert(QList<TextLine> &lines, const TextLine &line) const
    {
        const QRectF box = line.normBox.unitRect();
        const auto sharesColumn = [&](const TextLine &other) {
            const QRectF rect = other.normBox.unitRect();
            return rect.left() < box.right() && rect.right() > box.left();
        };
        const auto isAbove = [&](const TextLine &other) {
            return sharesColumn(other) && other.normBox.unitRect().center().y() < box.center().y();
        };
        const auto above = std::find_if(lines.rbegin(), lines.rend(), isAbove);
        lines.insert(above != lines.rend() ? above.base() : std::find_if(lines.begin(), lines.end(), sharesColumn),
                     line);
    }

    const ScreenReading m_former;
    const QImage &m_picture;
    const QRegion &m_changed;
    QList<QRect> m_boxes; ///< where the lines of the last reading are
    std::vector<bool> m_isKept;
    QList<TextLine> m_found;
    std::vector<QRect> m_goesOn; ///< the lines with what seems to continue them; null if nothing does
};

} // namespace

bool hasNews(const QList<TextLine> &lines, const QList<TextLine> &former)
{
    return std::ranges::any_of(lines, [&](const TextLine &line) {
        return std::ranges::find(former, line.text, &TextLine::text) == former.end();
    });
}

QList<QRect> differingLines(const QList<TextLine> &former, const QList<TextLine> &now, const QSize &size)
{
    QList<QRect> places;
    for (const auto &[some, others] : {std::pair(now, former), std::pair(former, now)}) {
        for (const TextLine &line : some) {
            if (!others.contains(line))
                places.append(pixelsOf(line.normBox, size));
        }
    }
    return places;
}

QRegion takeRunningLines(QList<TextLine> &lines, const QList<TextLine> &former, const QSize &size,
                         const QRegion &moving, const QRegion &running)
{
    QRegion places = running;
    for (const TextLine &line : std::as_const(lines)) {
        const QRect box = pixelsOf(line.normBox, size);
        if (moving.intersects(box) && !former.contains(line) &&
            std::ranges::any_of(former, [&](const TextLine &other) { return hasRun(line, other, size); }))
            places |= box;
    }
    lines.removeIf([&](const TextLine &line) { return places.contains(pixelsOf(line.normBox, size).center()); });
    return places;
}

QRegion cutLines(const QList<TextLine> &lines, const QList<TextLine> &former, const QSize &size, const QRegion &written)
{
    QRegion cut;
    if (written.isEmpty())
        return cut;
    QRegion read; // whole tiles
    for (const TextLine &line : lines)
        read |= tilesOf(pixelsOf(line.normBox, size));
    const QRegion unread = written - read;
    for (const TextLine &line : lines) {
        const QRect box = pixelsOf(line.normBox, size);
        const QRect tiles = tilesOf(box);
        const QRect middle(tiles.left() - tileSide, box.center().y(), tiles.width() + 2 * tileSide, 1);
        if (!former.contains(line) && unread.intersects(middle))
            cut |= tiles.adjusted(-tileSide, 0, tileSide, 0);
    }
    return cut;
}

QRect pixelsOf(const NormBox &normBox, const QSize &size)
{
    constexpr double rounding = 0.01; // of a box that was made of whole pixels
    return normBox.in(size).adjusted(rounding, rounding, -rounding, -rounding).toAlignedRect();
}

QList<QRect> placesOf(const QList<TextLine> &lines, const QSize &size)
{
    QList<QRect> places;
    for (const TextLine &line : lines)
        places.append(pixelsOf(line.normBox, size));
    return places;
}

ScreenReading readAgain(const ScreenReading &former, const QImage &picture, const QRegion &changed,
                        const ReadPart &read)
{
    if (former.picture.size() != picture.size())
        return {.picture = picture, .lines = read(picture.rect())};
    const auto shifts = shiftsOf({former.picture, former.lines}, picture);
    return SecondReading(haveMoved(shifts) ? movedReading(former, picture, shifts) : former, picture, changed).read(read);
}

} // namespace lucentra
