#include "LineRuns.h"

#include "TextRecognition.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace lucentra::lines {

namespace {

/// Heights of lines of one size differ by no more than this factor.
constexpr double sameSize = 1.1;
/// In pixels.
constexpr double rounding = 0.7;
constexpr double distanceTolerance = 0.1;
constexpr double widestPunctuation = 1.2;
constexpr double openingSpace = 0.5;

double sharedWidth(const QRectF &a, const QRectF &b)
{
    return std::min(a.right(), b.right()) - std::max(a.left(), b.left());
}

/// The last line of a paragraph may be so short that it ends before an indented line begins.
bool areInOneColumn(const Line &a, const Line &b)
{
    return sharedWidth(a.rect, b.rect) > 0 || std::abs(a.rect.left() - b.rect.left()) <= greatestIndent * a.em();
}

/// Whether a line was found in two pieces, since its ideographic punctuation is mostly white.
bool isRestOf(const Line &piece, const Line &rest)
{
    static const QRegularExpression white(u"[，。、！？：；」』）]$"_s);
    const double gap = rest.rect.left() - piece.rect.right();
    return areOfOneSize(piece, rest) && gap > 0 && gap <= widestPunctuation * piece.em() &&
           std::abs(piece.rect.center().y() - rest.rect.center().y()) < piece.em() / 4 &&
           (white.match(piece.text).hasMatch() || u"「『（《"_s.contains(rest.text.left(1)));
}

} // namespace

bool areOfOneSize(const Line &a, const Line &b)
{
    return std::max(a.em(), b.em()) <= std::min(a.em(), b.em()) * sameSize + rounding;
}

double distance(const Line &upper, const Line &lower)
{
    return lower.rect.center().y() - upper.rect.center().y();
}

PlacedLines::PlacedLines(const QList<TextLine> &lines, const QSizeF &imageSize)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF &box = lines[i].normBox;
        Line line{.text = lines[i].text.trimmed(),
                  .rect = {box.x() * imageSize.width(), (1 - box.y() - box.height()) * imageSize.height(),
                           box.width() * imageSize.width(), box.height() * imageSize.height()},
                  .pieces = {i}};
        if (u"（「『《〈【"_s.contains(line.text.left(1))) // the ink of these is in the right half
            line.rect.setLeft(line.rect.left() - openingSpace * line.em());
        if (!m_lines.empty() && isRestOf(m_lines.back(), line)) {
            m_lines.back().text += line.text;
            m_lines.back().rect |= line.rect;
            m_lines.back().pieces.push_back(i);
        } else {
            m_lines.push_back(line);
        }
    }
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
    if (!areOfOneSize(upper, lower) || apart < leastDistance || apart > greatestDistance)
        return {};
    const double tolerance = sameEdge * em;
    const double left = lower.rect.left() - upper.rect.left();
    const bool isIndented = isFirst && -left >= leastIndent * em && -left <= greatestIndent * em;
    const bool isHanging = isFirst && left >= leastIndent * em && left <= greatestIndent * em;
    Links result;
    result.setFlag(Left, std::abs(left) <= tolerance || isHanging || isIndented);
    result.setFlag(Centre, std::abs(lower.rect.center().x() - upper.rect.center().x()) <= tolerance);
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
        if (lower.above != &upper - m_lines.data() || !common ||
            (usual > 0 && std::abs(apart - usual) > distanceTolerance * upper.em() + rounding))
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
