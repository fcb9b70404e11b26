#include "MovedLines.h"

#include "PictureChange.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace lucentra {

namespace {

/// The most lines that are searched for at every distance, and the most distances that are tried for the others.
constexpr size_t mostSearches = 3;
constexpr size_t mostDistances = 8;
/// About the height of a line, in pixels.
constexpr int lineHeight = 24;
/// A line so close to the top or bottom of a picture may be cut off there. Pixels.
constexpr int edge = 2;

bool isAt(const QImage &before, const QImage &now, const QRect &box, int shift)
{
    if (!now.rect().contains(box.translated(0, shift)))
        return false;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        const qsizetype left = box.left() * qsizetype(sizeof(QRgb));
        if (std::memcmp(before.constScanLine(y) + left, now.constScanLine(y + shift) + left,
                        size_t(box.width()) * sizeof(QRgb)) != 0)
            return false;
    }
    return true;
}

/// Whether there is something to recognize the place by.
bool hasShapes(const QImage &picture, const QRect &box)
{
    for (int x = box.left(); x <= box.right(); x += tileSide) {
        if (mayHoldWriting(picture, QRect(x, box.top(), tileSide, tileSide) & box))
            return true;
    }
    return false;
}

bool shareColumns(const QRect &a, const QRect &b)
{
    return !a.isNull() && a.left() <= b.right() && b.left() <= a.right();
}

/// The distance by which most of the boxes have moved; 0 if none has.
template <typename Predicate>
int commonShift(const std::vector<QRect> &boxes, int height, Predicate hasCome)
{
    std::vector<int> distances;
    const size_t step = std::max<size_t>(1, boxes.size() / mostSearches);
    for (size_t i = 0; i < boxes.size() && distances.size() < mostDistances; i += step) {
        const QRect &box = boxes[i];
        for (int shift = -box.top(); box.bottom() + shift < height && distances.size() < mostDistances; ++shift) {
            if (shift != 0 && std::ranges::find(distances, shift) == distances.end() && hasCome(box, shift))
                distances.push_back(shift);
        }
    }
    int best = 0;
    std::ptrdiff_t most = 0;
    for (const int distance : distances) {
        const auto count = std::ranges::count_if(boxes, [&](const QRect &box) { return hasCome(box, distance); });
        if (count > most || (count == most && std::abs(distance) < std::abs(best))) {
            most = count;
            best = distance;
        }
    }
    return best;
}

/// Copies what was above or below in `before` to the places where it is now, except beside what comes into view: there may
/// be a line of which only a part was in view. It is compared by columns, since beside a list there may be something
/// that stays.
void moveContents(QImage &moved, const QImage &before, const QImage &now, int shift)
{
    for (int x = 0; x < now.width(); x += tileSide) {
        const qsizetype left = x * qsizetype(sizeof(QRgb));
        const size_t length = size_t(std::min(tileSide, now.width() - x)) * sizeof(QRgb);
        const auto isSame = [&](int y) {
            return y - shift >= 0 && y - shift < now.height() &&
                   std::memcmp(before.constScanLine(y - shift) + left, now.constScanLine(y) + left, length) == 0;
        };
        for (int top = 0, bottom = 0; top < now.height(); top = bottom + 1) {
            for (bottom = top; bottom < now.height() && isSame(bottom);)
                ++bottom;
            const int first = shift > 0 ? top + lineHeight : top;
            const int last = shift < 0 ? bottom - lineHeight : bottom;
            for (int y = first; y < last; ++y)
                std::memcpy(moved.scanLine(y) + left, now.constScanLine(y) + left, length);
        }
    }
}

} // namespace

QList<std::optional<int>> shiftsOf(const ScreenReading &former, const QImage &now)
{
    QList<std::optional<int>> shifts(former.lines.size(), 0);
    if (former.picture.size() != now.size())
        return shifts;
    QList<QRect> boxes;
    std::vector<QRect> changed;
    std::vector<QRect> resting;
    for (const TextLine &line : former.lines) {
        boxes.append(pixelsOf(line.normBox, now.size()) & now.rect());
        if (isSamePicture(former.picture, now, boxes.last()))
            resting.push_back(boxes.last());
        else if (hasShapes(former.picture, boxes.last()))
            changed.push_back(boxes.last());
    }
    const auto hasCome = [&](const QRect &box, int shift) {
        // The same text may have been there before.
        return isAt(former.picture, now, box, shift) && std::ranges::none_of(resting, [&](const QRect &other) {
                   return isSamePlace(other, box.translated(0, shift));
               });
    };
    const int shift = commonShift(changed, now.height(), hasCome);
    QList<QRect> moved;
    for (const QRect &box : changed) {
        if (shift != 0 && hasCome(box, shift))
            moved.append(box);
    }
    const QList<QRect> scrolled = moved + QList{former.scrolled};
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        if (moved.contains(boxes[i]))
            shifts[i] = shift;
        else if (!isSamePicture(former.picture, now, boxes[i]) &&
                 std::ranges::any_of(scrolled, [&](const QRect &box) { return shareColumns(box, boxes[i]); }))
            shifts[i] = std::nullopt;
    }
    return shifts;
}

bool haveMoved(const QList<std::optional<int>> &shifts)
{
    return std::ranges::any_of(shifts, [](const std::optional<int> &shift) { return shift != 0; });
}

ScreenReading movedReading(const ScreenReading &former, const QImage &now, const QList<std::optional<int>> &shifts)
{
    ScreenReading moved{.picture = former.picture};
    for (const std::optional<int> &shift : shifts) {
        if (shift.value_or(0) == 0)
            continue;
        moveContents(moved.picture, former.picture, now, *shift);
        break; // all have moved by the same distance
    }
    QPainter painter(&moved.picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (qsizetype i = 0; i < shifts.size(); ++i) {
        if (!shifts[i])
            continue;
        TextLine line = former.lines[i];
        const QRect before = pixelsOf(line.normBox, now.size()) & now.rect();
        const QRect place = before.translated(0, *shifts[i]);
        painter.drawImage(place.topLeft(), *shifts[i] != 0 ? now : former.picture, place);
        if (*shifts[i] != 0) {
            line.normBox.y -= double(*shifts[i]) / now.height();
            moved.scrolled |= place;
        }
        const bool wasCut = before.top() < edge || before.bottom() >= now.height() - edge;
        if (former.preliminary.intersects(before) || (*shifts[i] != 0 && wasCut))
            moved.preliminary |= place;
        moved.lines.append(line);
    }
    return moved;
}

} // namespace lucentra
