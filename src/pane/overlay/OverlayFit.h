#pragma once

#include <QString>

#include <limits>

namespace lucentra {

/// A text on one line, in whole points, rounded up.
struct SingleLineMeasure
{
    double lineHeight = 0; ///< ascender, descender and leading of the font
    double width = 0;

    bool operator==(const SingleLineMeasure &) const = default;
};

/// Rounds a measure up to whole points. Ignores the tiny excess that scaling leaves above whole numbers.
double roundedUpToPoints(double measure);

/// Measures overlay texts, consistently with how they are drawn. Sizes and measures are points.
class OverlayTextMeasurer
{
public:
    virtual ~OverlayTextMeasurer() = default;

    virtual SingleLineMeasure measureSingleLine(const QString &text, double fontSize) = 0;
    /// The height of the text broken into lines at a width, not rounded. If the height exceeds `atMost`, any finite
    /// value clearly above `atMost` may be returned.
    virtual double boundingHeight(const QString &text, double width, double fontSize,
                                  double atMost = std::numeric_limits<double>::infinity()) = 0;
};

/// The size at which a text fits, and its lines.
struct OverlayFit
{
    int lines = 1;       ///< the greatest number of lines, 1 to 4; a longer text ends with an ellipsis
    double fontSize = 0; ///< points
    double height = 0;   ///< of the overlay, points
    bool isWhole = true; ///< whether nothing is cut off

    bool operator==(const OverlayFit &) const = default;
};

/// The size that fitting starts from, within the bounds of its mode: a part of the source's height in the automatic
/// mode, else the stored size (a value that is not above 0 counts as never stored).
double startingFontSize(bool isAuto, double sourceHeight, double storedFontSize);

/// Finds size, lines and height for a text. The automatic mode prefers one line, a little smaller if need be, then
/// the greatest size in half points at which the whole text fits. If there is none, the text is cut off. The fixed
/// mode keeps its size. The height is never less than the source's, even above `maxHeight`. A measure that is not
/// finite, or a line height of 0, counts as one line of the source's height.
OverlayFit fitOverlayText(OverlayTextMeasurer &measurer, const QString &text, bool isAuto, double sourceHeight,
                          double textWidth, double maxHeight, double storedFontSize);

} // namespace lucentra
