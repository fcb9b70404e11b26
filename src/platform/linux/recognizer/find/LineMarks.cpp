#include "find/LineMarks.h"

#include "Rules.h"

#include <algorithm>
#include <cstdlib>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

bool isDot(const QRect &ink, const QRect &line)
{
    const int largest = std::max(3, line.height() * 22 / 100);
    return ink.width() <= largest && ink.height() <= largest &&
           std::abs(ink.width() - ink.height()) <= std::max(1, ink.height() / 3);
}

/// The horizontal gap to the nearest other shape; negative where they overlap.
int clearanceOf(std::size_t index, const std::vector<QRect> &shapes)
{
    int clearance = 10'000;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const QRect &a = shapes[index];
        const QRect &b = shapes[i];
        if (i != index)
            clearance = std::min(clearance, std::max(a.left(), b.left()) - std::min(a.right(), b.right()) - 1);
    }
    return clearance;
}

bool isMiddleDot(std::size_t index, const std::vector<QRect> &shapes, const QRect &line)
{
    const QRect &ink = shapes[index];
    const int fromTop = 2 * (ink.top() - line.top()) + ink.height(); // twice the centre's height
    const bool isInTheMiddle = 10 * fromTop >= 7 * line.height() && 10 * fromTop <= 12 * line.height();
    const bool isSpeck = ink.width() < 2 || ink.height() < 2;
    return !isSpeck && isDot(ink, line) && isInTheMiddle &&
           clearanceOf(index, shapes) >= std::max(3, line.height() * 3 / 10);
}

/// How many of the last shapes are the dots of an ellipsis: three equal ones in equal steps, or two where the first has
/// run into the letter before it. `end` becomes where the letters end.
int ellipsisDots(const std::vector<QRect> &shapes, const QRect &line, int &end)
{
    if (shapes.size() < 3)
        return 0;
    const QRect &before = shapes[shapes.size() - 3];
    const QRect &b = shapes[shapes.size() - 2];
    const QRect &c = shapes[shapes.size() - 1];
    const int step = c.left() - b.left();
    const auto follow = [&](const QRect &first, const QRect &second) {
        return std::abs(first.bottom() - second.bottom()) <= 1 && std::abs(second.left() - first.left() - step) <= 1;
    };
    if (!isDot(b, line) || !isDot(c, line) || !follow(b, c) || step < 2 || step >= line.height())
        return 0;
    const bool areThree = isDot(before, line) && follow(before, b) && shapes.size() > 3;
    end = (areThree ? before.left() : b.left() - step) - 1;
    const bool isGlued =
        before.height() > line.height() / 2 && before.right() > end && before.right() <= end + c.width() + 1;
    return areThree ? 3 : isGlued ? 2 : 0;
}

} // namespace

QList<LinePiece> piecesOf(std::vector<QRect> shapes, const QRect &line)
{
    std::ranges::sort(shapes, {}, &QRect::left);
    int end = line.right();
    int dots = ellipsisDots(shapes, line, end);
    if (end < shapes.front().right() || !isOn("ellipsis"))
        dots = 0; // of the first letter nothing would be left
    shapes.resize(shapes.size() - std::size_t(dots));
    const QString ending = dots > 0 ? u"…"_s : QString();
    QList<LinePiece> pieces;
    QRect piece;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const bool isInside = !piece.isNull() && i + 1 < shapes.size();
        if (isInside && isOn("middle dots") && isMiddleDot(i, shapes, line)) {
            pieces.append({piece, clearanceOf(i, shapes) > line.height() * 2 / 5 ? u" · "_s : u"・"_s, {}});
            piece = {};
        } else {
            piece |= shapes[i];
        }
    }
    if (dots > 0)
        piece.setRight(std::min(piece.right(), end));
    pieces.append({piece, ending, {}});
    return pieces;
}

} // namespace lucentra
