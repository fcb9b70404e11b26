#include "LinePieces.h"

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
int clearanceOf(std::size_t index, const std::vector<EdgeShape> &shapes)
{
    int clearance = 10'000;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const QRect &a = shapes[index].ink;
        const QRect &b = shapes[i].ink;
        if (i != index)
            clearance = std::min(clearance, std::max(a.left(), b.left()) - std::min(a.right(), b.right()) - 1);
    }
    return clearance;
}

bool isMiddleDot(std::size_t index, const std::vector<EdgeShape> &shapes, const QRect &line)
{
    const QRect &ink = shapes[index].ink;
    const int fromTop = 2 * (ink.top() - line.top()) + ink.height(); // twice the centre's height
    const bool isInTheMiddle = 10 * fromTop >= 7 * line.height() && 10 * fromTop <= 12 * line.height();
    const bool isSpeck = ink.width() < 2 || ink.height() < 2;
    return !isSpeck && isDot(ink, line) && isInTheMiddle &&
           clearanceOf(index, shapes) >= std::max(3, line.height() * 3 / 10);
}

/// Three equal dots in equal steps at the end, after something else.
bool endsInDots(const std::vector<EdgeShape> &shapes, const QRect &line)
{
    if (shapes.size() < 5)
        return false;
    const QRect &a = shapes[shapes.size() - 3].ink;
    const QRect &b = shapes[shapes.size() - 2].ink;
    const QRect &c = shapes[shapes.size() - 1].ink;
    const int step = b.left() - a.left();
    const bool areDots = isDot(a, line) && isDot(b, line) && isDot(c, line);
    const bool areAligned = std::abs(a.bottom() - b.bottom()) <= 1 && std::abs(b.bottom() - c.bottom()) <= 1;
    const bool areEven = std::abs(c.left() - b.left() - step) <= 1 && step < line.height();
    return areDots && areAligned && areEven && a.left() > shapes[shapes.size() - 4].ink.right();
}

} // namespace

QList<LinePiece> piecesOf(std::vector<EdgeShape> shapes, const QRect &line)
{
    std::sort(shapes.begin(), shapes.end(),
              [](const EdgeShape &a, const EdgeShape &b) { return a.ink.left() < b.ink.left(); });
    QString ending;
    if (endsInDots(shapes, line)) {
        shapes.resize(shapes.size() - 3);
        ending = u"…"_s;
    }
    QList<LinePiece> pieces;
    QRect piece;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const bool isInside = !piece.isNull() && i + 1 < shapes.size();
        if (isInside && isMiddleDot(i, shapes, line)) {
            pieces.append({piece, clearanceOf(i, shapes) > line.height() * 2 / 5 ? u" · "_s : u"・"_s});
            piece = {};
        } else {
            piece |= shapes[i].ink;
        }
    }
    pieces.append({piece, ending});
    return pieces;
}

} // namespace lucentra
