#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <QTextLayout>
#include <QTextOption>

class QPainter;

namespace lucentra {

/// The text of one overlay, shaped once at the reference size of the font; every size in points is a scale of it.
/// Measuring and drawing break the lines by the same code, so that what was measured to fit is drawn whole.
///
/// Line breaks in the text are drawn as spaces, since an overlay replaces one line of the source. A character
/// that no installed font can draw is left out or replaced, and is never drawn as an empty box. The distance between
/// lines doesn't depend on the fonts used in them. Measures are points and not rounded.
class OverlayText
{
public:
    /// `font` has a whole-pixel size. Texts longer than `maximumLength` are cut off: no pane could show them.
    OverlayText(const QString &text, const QFont &font);

    /// Four lines of a narrow letter at the least size across the widest display hold about 12000.
    static constexpr int maximumLength = 16384;

    bool isRightToLeft() const { return m_layout.textOption().textDirection() == Qt::RightToLeft; }
    double lineHeight(double fontSize) const;
    double lineWidth(double fontSize) const;
    /// The height at a width. If it exceeds `atMost`, some greater height may be returned.
    double boundingHeight(double width, double fontSize, double atMost);

    /// Draws at most `lines` lines into a width with the painter's pen, the last one with an ellipsis if the
    /// text is longer. `topLeft` is the corner of the first line's capitals rather than of its box: the rectangle of a
    /// source line encloses its ink, so that the letters are drawn over those of the source. A right-to-left text is
    /// aligned to the right unless it is centred. `lineDistance` is in points; 0 means that of the font.
    void draw(QPainter &painter, QPointF topLeft, double width, double fontSize, int lines, double lineDistance = 0,
              Qt::Alignment alignment = Qt::AlignLeft);

private:
    int breakIntoLines(double width, int limit);
    double leastHeight(double width, double fontSize) const;
    void takeMeasures();
    QString lastLine(int firstCharacter, int endCharacter, double width) const;
    void drawLine(QPainter &painter, const QTextLine &line, double top, Qt::Alignment alignment) const;

    const QFont m_font;
    QTextLayout m_layout;
    // Pixels at the reference size.
    double m_ascent = 0;
    double m_descent = 0;
    double m_emptyTop = 0; ///< the first line's room above its ink or its capitals, whichever are higher
    double m_width = 0;
    double m_blackWidth = 0; ///< the width without spaces, which broken lines together hold at least
};

} // namespace lucentra
