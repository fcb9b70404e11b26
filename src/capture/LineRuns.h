#pragma once

#include <QFlags>
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <algorithm>
#include <vector>

namespace lucentra {

struct TextLine;

/// How the recognized lines of a screen are placed to each other: which ones are one below the other in a column, with
/// one size and one distance. Lengths are in ems, which is the height of a line, unless stated otherwise.
namespace lines {

/// The first line of a paragraph may be indented by this much.
inline constexpr double leastIndent = 0.8;
inline constexpr double greatestIndent = 4.5;
/// The distance between the centres of two lines of a paragraph.
inline constexpr double leastDistance = 0.7;
inline constexpr double greatestDistance = 2.1;
/// Edges and centres that are no farther apart count as equal.
inline constexpr double sameEdge = 0.55;

/// Which edges or centres two lines have in common.
enum Link { Left = 1, Centre = 2, Right = 4 };
Q_DECLARE_FLAGS(Links, Link)

/// A recognized line in pixels, y down, and its neighbours.
struct Line
{
    QString text;
    QRectF rect;
    qsizetype below = -1; ///< the next line of its column
    qsizetype above = -1;
    double letterWidth = 0;          ///< relative to that of a usual font, or 0 if there are few letters
    double middle = 0;               ///< between the baseline and the tops of ideographs, whatever letters there are
    bool hasNeighbour = false;       ///< there is text beside it on its row
    std::vector<qsizetype> pieces{}; ///< the indices of its lines, from left to right

    double em() const { return std::max(1.0, rect.height()); }
};

/// Lines of one column with one distance, from the top.
using Run = std::vector<const Line *>;

bool areOfOneSize(const Line &a, const Line &b);
/// In pixels.
double distance(const Line &upper, const Line &lower);

/// The lines of a screen in reading order; what was found in pieces is one line.
class PlacedLines
{
public:
    /// `imageSize` is in pixels.
    PlacedLines(const QList<TextLine> &lines, const QSizeF &imageSize);

    const std::vector<Line> &lines() const { return m_lines; }
    /// The longest run from a line downwards, and what all its lines have in common.
    Run runFrom(const Line &first, Links &kind) const;

private:
    void findColumns();
    Links links(const Line &upper, const Line &lower, bool isFirst) const;

    std::vector<Line> m_lines;
};

} // namespace lines

} // namespace lucentra
