#include "LineRuns.h"

#include "LineText.h"
#include "TextRecognition.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace lucentra::lines {

namespace {

/// Heights of lines of one size differ by no more than this factor.
constexpr double sameSize = 1.1;
/// The same for the pieces of one line.
constexpr double likeHeight = 1.22;
/// The same for lines whose letters have one width, which differs by no more than the next factor.
constexpr double unevenHeight = 1.6;
constexpr double sameWidth = 1.12;
constexpr double enoughText = 5; ///< to tell the width of a letter
/// By how much the box of Latin letters is below that of ideographs with the same baseline.
constexpr double boxesApart = 0.1;
/// In pixels.
constexpr double rounding = 1;
constexpr double distanceTolerance = 0.16;
constexpr double widestPunctuation = 1.2;
constexpr double widestSpace = 1.6;
constexpr double widestJustified = 4; ///< space, if there are others in the line that are as wide
constexpr double evenSpaces = 0.6;    ///< by how much these differ
constexpr double openingSpace = 0.5;
constexpr double clearlyCentred = 0.25;

double widthInCommon(const QRectF &a, const QRectF &b)
{
    return std::min(a.right(), b.right()) - std::max(a.left(), b.left());
}

bool areAlike(const Line &a, const Line &b)
{
    return std::max(a.em(), b.em()) <= std::min(a.em(), b.em()) * likeHeight;
}

void measure(Line &line)
{
    const double width = advance(line.text);
    line.letterWidth = width < enoughText ? 0 : line.rect.width() / width;
    line.middle = line.rect.center().y() - (hasSquares(line.text) ? 0 : boxesApart * line.em());
}

/// The last line of a paragraph may be so short that it ends before an indented line begins.
bool areInOneColumn(const Line &a, const Line &b)
{
    return widthInCommon(a.rect, b.rect) > 0 || std::abs(a.rect.left() - b.rect.left()) <= greatestIndent * a.em();
}

/// Whether one line can be the rest of another that was found in pieces.
bool canBeRestOf(const Line &piece, const Line &rest, double widest)
{
    const double gap = rest.rect.left() - piece.rect.right();
    return areAlike(piece, rest) && gap > 0 && gap <= widest * piece.em() &&
           std::abs(piece.rect.center().y() - rest.rect.center().y()) < piece.em() / 4;
}

/// Whether the gap between two pieces is ideographic punctuation, which is mostly white.
bool isPunctuation(const Line &piece, const Line &rest)
{
    static const QRegularExpression white(u"[，。、！？：；」』）]$"_s);
    return rest.rect.left() - piece.rect.right() <= widestPunctuation * piece.em() &&
           (white.match(piece.text).hasMatch() || u"「『（《"_s.contains(rest.text.left(1)));
}

/// Whether a line is right above or below two pieces and covers both, so that the gap between them is a wide space of
/// justified text rather than one between columns.
bool bridges(const Line &line, const Line &piece, const Line &rest)
{
    const double em = piece.em();
    const double apart = std::abs(distance(line, piece));
    return apart >= leastDistance * em && apart <= greatestDistance * em && areAlike(line, piece) &&
           line.rect.left() <= piece.rect.left() + sameEdge * em &&
           line.rect.right() >= rest.rect.right() - sameEdge * em;
}

void append(Line &line, const Line &rest)
{
    line.text = joinedLines(line.text, rest.text, {});
    line.rect |= rest.rect;
    measure(line);
    line.pieces.insert(line.pieces.end(), rest.pieces.begin(), rest.pieces.end());
}

/// The last of the pieces that are one line of justified text together with `first`: their spaces are even, and their
/// edges are those of a line right above or below.
size_t endOfJustified(const std::vector<Line> &pieces, size_t first)
{
    const double em = pieces[first].em();
    double least = std::numeric_limits<double>::infinity();
    double most = 0;
    size_t end = first;
    for (size_t i = first + 1; i < pieces.size() && canBeRestOf(pieces[i - 1], pieces[i], widestJustified); ++i) {
        const double space = pieces[i].rect.left() - pieces[i - 1].rect.right();
        least = std::min(least, space);
        most = std::max(most, space);
        if (most - least > evenSpaces * em || isMostlyDigits(pieces[i].text))
            break;
        const auto hasItsEdges = [&](const Line &line) {
            return bridges(line, pieces[first], pieces[i]) &&
                   line.rect.right() - pieces[i].rect.right() <= sameEdge * em &&
                   pieces[first].rect.left() - line.rect.left() <= greatestIndent * em;
        };
        if (i - first > 1 && std::any_of(pieces.begin(), pieces.end(), hasItsEdges))
            end = i;
    }
    return end;
}

/// Makes one line of each line that was found in pieces. What is one then can show the same of the next.
std::vector<Line> wholeLines(const std::vector<Line> &pieces)
{
    std::vector<Line> lines;
    for (size_t i = 0; i < pieces.size(); ++i) {
        Line line = pieces[i];
        for (const size_t end = endOfJustified(pieces, i); i < end; ++i)
            append(line, pieces[i + 1]);
        Line *before = lines.empty() || !canBeRestOf(lines.back(), line, widestSpace) ? nullptr : &lines.back();
        const auto bridgesGap = [&](const Line &other) { return bridges(other, *before, line); };
        if (before && (isPunctuation(*before, line) || std::any_of(pieces.begin(), pieces.end(), bridgesGap)))
            append(*before, line);
        else
            lines.push_back(line);
    }
    return lines.size() < pieces.size() ? wholeLines(lines) : lines;
}

} // namespace

bool areOfOneSize(const Line &a, const Line &b)
{
    const double low = std::min(a.em(), b.em());
    const double high = std::max(a.em(), b.em());
    // A letter that was read wrongly changes a line's height more than its width.
    const auto [narrow, wide] = std::minmax(a.letterWidth, b.letterWidth);
    return high <= low * sameSize + rounding ||
           (high <= low * unevenHeight && narrow > 0 && wide <= narrow * sameWidth);
}

double distance(const Line &upper, const Line &lower)
{
    return lower.middle - upper.middle;
}

PlacedLines::PlacedLines(const QList<TextLine> &lines, const QSizeF &imageSize)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        Line line{.text = lines[i].text.trimmed(), .rect = lines[i].normBox.in(imageSize), .pieces = {i}};
        if (u"（「『《〈【"_s.contains(line.text.left(1))) // the ink of these is in the right half
            line.rect.setLeft(line.rect.left() - openingSpace * line.em());
        measure(line);
        m_lines.push_back(line);
    }
    m_lines = wholeLines(m_lines);
    findColumns();
}

void PlacedLines::findColumns()
{
    for (Line &line : m_lines) {
        double nearest = std::numeric_limits<double>::infinity();
        for (qsizetype i = 0; i < qsizetype(m_lines.size()); ++i) {
            const Line &other = m_lines[i];
            if (&other == &line)
                continue;
            const double down = other.rect.center().y() - line.rect.center().y();
            if (std::abs(down) < line.em() / 2)
                line.hasNeighbour = true;
            else if (down > 0 && down < nearest && areInOneColumn(line, other)) {
                nearest = down;
                line.below = i;
            }
        }
    }
    for (Line &line : m_lines) {
        if (line.below < 0)
            continue;
        // Two lines above one are two columns above a wide text.
        Line &below = m_lines[line.below];
        below.above = below.above == -1 ? &line - m_lines.data() : -2;
    }
}

Links PlacedLines::links(const Line &upper, const Line &lower, bool isFirst) const
{
    const double em = std::min(upper.em(), lower.em());
    const double apart = distance(upper, lower) / em;
    if (apart < leastDistance || apart > greatestDistance)
        return {};
    const double tolerance = sameEdge * em;
    const double left = lower.rect.left() - upper.rect.left();
    const bool isIndented = isFirst && -left >= leastIndent * em && -left <= greatestIndent * em;
    const double centre = std::abs(lower.rect.center().x() - upper.rect.center().x());
    const bool isHanging =
        isFirst && left >= leastIndent * em && left <= greatestIndent * em && centre > clearlyCentred * em;
    Links result;
    result.setFlag(Left, std::abs(left) <= tolerance || isHanging || isIndented);
    result.setFlag(Centre, centre <= tolerance);
    result.setFlag(Right, std::abs(lower.rect.right() - upper.rect.right()) <= tolerance);
    return result;
}

Run PlacedLines::runFrom(const Line &first, Links &kind) const
{
    Run run{&first};
    kind = Links(Left) | Centre | Right;
    double usual = 0;
    while (run.back()->below >= 0) {
        const Line &upper = *run.back();
        const Line &lower = m_lines[upper.below];
        const Links common = kind & links(upper, lower, run.size() == 1);
        const double apart = distance(upper, lower);
        const double unevenness = std::abs(upper.em() - lower.em()) / 2;
        if (!areOfOneSize(first, lower) || lower.above != &upper - m_lines.data() || !common ||
            (usual > 0 && std::abs(apart - usual) > distanceTolerance * upper.em() + unevenness + rounding))
            break;
        // A full line above an indented one.
        if (common == Right && lower.below >= 0 && links(lower, m_lines[lower.below], true) & Left)
            break;
        kind = common;
        usual = usual > 0 ? usual : apart;
        run.push_back(&lower);
    }
    return run;
}

} // namespace lucentra::lines
