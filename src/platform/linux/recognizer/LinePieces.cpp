#include "LinePieces.h"

#include "Figure.h"

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

/// How many of the last shapes are the dots of an ellipsis: three equal ones in equal steps, or two where the first has
/// run into the letter before it. `end` becomes where the letters end.
int ellipsisDots(const std::vector<EdgeShape> &shapes, const QRect &line, int &end)
{
    if (shapes.size() < 3)
        return 0;
    const QRect &before = shapes[shapes.size() - 3].ink;
    const QRect &b = shapes[shapes.size() - 2].ink;
    const QRect &c = shapes[shapes.size() - 1].ink;
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

QList<LinePiece> piecesOf(std::vector<EdgeShape> shapes, const QRect &line)
{
    std::sort(shapes.begin(), shapes.end(),
              [](const EdgeShape &a, const EdgeShape &b) { return a.ink.left() < b.ink.left(); });
    int end = line.right();
    int dots = ellipsisDots(shapes, line, end);
    if (end < shapes.front().ink.right())
        dots = 0; // of the first letter nothing would be left
    shapes.resize(shapes.size() - std::size_t(dots));
    const QString ending = dots > 0 ? u"…"_s : QString();
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
    if (dots > 0)
        piece.setRight(std::min(piece.right(), end));
    pieces.append({piece, ending});
    return pieces;
}

bool endsInRing(const QImage &image, const std::vector<EdgeShape> &shapes, const QRect &line)
{
    const auto last = std::max_element(shapes.begin(), shapes.end(), [](const EdgeShape &a, const EdgeShape &b) {
        return a.ink.right() < b.ink.right();
    });
    if (last == shapes.end())
        return false;
    const QRect &ink = last->ink;
    const int size = std::max(ink.width(), ink.height());
    const bool isRound = std::abs(ink.width() - ink.height()) <= std::max(1, size / 4);
    const bool isSmall = size >= 4 && 100 * size >= 16 * line.height() && 100 * size <= 42 * line.height();
    if (!isRound || !isSmall || 2 * ink.center().y() < line.top() + line.bottom())
        return false;
    // Nothing stands above it, as in 品.
    const bool isAlone = std::all_of(shapes.begin(), shapes.end(), [&](const EdgeShape &shape) {
        return shape.ink == ink || shape.ink.right() < ink.left();
    });
    if (!isAlone)
        return false;
    const auto at = [&](int x, int y) {
        return image.pixel(std::clamp(x, 0, image.width() - 1), std::clamp(y, 0, image.height() - 1));
    };
    const QPoint centre = ink.center();
    const QRgb paper = at(ink.right() + 2, centre.y());
    int sides = 0; // how far the strokes are from the paper's colour; the weakest counts
    int weakest = 255;
    for (const QPoint &step : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
        int strongest = 0;
        for (int i = 1; i <= size / 2 + 1; ++i)
            strongest = std::max(strongest, distance(paper, at(centre.x() + i * step.x(), centre.y() + i * step.y())));
        sides += strongest;
        weakest = std::min(weakest, strongest);
    }
    return weakest >= 40 && 2 * weakest >= sides / 4 && 10 * distance(paper, at(centre.x(), centre.y())) < 6 * weakest;
}

} // namespace lucentra
