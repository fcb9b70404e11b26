#include "OverlayText.h"

#include "DrawableText.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextBoundaryFinder>
#include <QTextOption>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The height of every line above and below the baseline, in ems, as in the system font for which the overlays'
/// constants were tuned. The families' own line heights, 1.36 to 2.1 em, are made for running text and every mark of
/// their scripts. The lines of a text with such marks grow by what its ink needs.
constexpr double nominalAscent = 0.952;
constexpr double nominalDescent = 0.241;
/// The widest line that the toolkit's fixed-point numbers can hold.
constexpr double unlimitedWidth = 8000000;
/// A text that exceeds the width by no more than this, in points, stays on one line, since the padding is wider.
constexpr double widthTolerance = 0.25;
/// Breaking a line loses kerning, so lines may be a little narrower than their share of the whole.
constexpr double brokenLineShare = 0.98;
/// The width of nearly all user-perceived characters is less, in ems.
constexpr double widestCharacter = 4;
/// A height that exceeds a limit by more than this, in points, exceeds it despite rounding.
constexpr double clearExcess = 0.001;

QTextOption optionFor(const QString &text)
{
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    return option;
}

QTextLine singleLine(QTextLayout &layout, double width)
{
    QTextOption option = layout.textOption();
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(width);
    layout.endLayout();
    return line;
}

/// The area that a run's glyphs blacken.
QRectF inkOf(const QGlyphRun &run)
{
    const QRawFont font = run.rawFont();
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    if (glyphs.isEmpty() || isBoxFont(font))
        return {};
    // Coloured emoji are pictures that fill their font's line; asking for each one's rectangle would decode it.
    if (font.familyName().contains(u"Emoji"_s))
        return {positions.first().x(), positions.first().y() - font.ascent(), 1, font.ascent() + font.descent()};
    QRectF ink;
    for (qsizetype i = 0; i < glyphs.size(); ++i)
        ink |= font.boundingRect(glyphs[i]).translated(positions[i]);
    return ink;
}

double spaceWidth(const QString &text, const QFont &font)
{
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const QChar character : text) {
        if (character.isSpace())
            width += metrics.horizontalAdvance(character);
    }
    return width;
}

} // namespace

OverlayText::OverlayText(const QString &text, const QFont &font)
    : m_font(font)
    , m_layout(drawableText(text.first(std::min<qsizetype>(text.size(), maximumLength))), font)
{
    m_layout.setCacheEnabled(true);
    m_layout.setTextOption(optionFor(m_layout.text()));
    singleLine(m_layout, unlimitedWidth);
    if (hasMissingGlyphs(m_layout.glyphRuns()))
        m_layout.setText(withoutMissingGlyphs(m_layout.text(), m_font));
    takeMeasures();
}

void OverlayText::takeMeasures()
{
    m_ascent = nominalAscent * m_font.pixelSize();
    m_descent = nominalDescent * m_font.pixelSize();
    m_emptyTop = 0;
    const QTextLine line = singleLine(m_layout, unlimitedWidth);
    if (!line.isValid())
        return;
    m_width = line.naturalTextWidth();
    m_blackWidth = m_width - spaceWidth(m_layout.text(), m_font);

    double inkAscent = QFontMetricsF(m_font).capHeight();
    const double baseline = line.y() + line.ascent();
    for (const QGlyphRun &run : m_layout.glyphRuns()) {
        const QRectF ink = inkOf(run);
        inkAscent = std::max(inkAscent, baseline - ink.top());
        m_descent = std::max(m_descent, ink.bottom() - baseline);
    }
    m_ascent = std::max(m_ascent, inkAscent);
    m_emptyTop = m_ascent - inkAscent;
}

double OverlayText::lineHeight(double fontSize) const
{
    return (m_ascent + m_descent) * fontSize / m_font.pixelSize();
}

double OverlayText::lineWidth(double fontSize) const
{
    return m_width * fontSize / m_font.pixelSize();
}

/// A lower bound of the height, without breaking the text into lines.
double OverlayText::leastHeight(double width, double fontSize) const
{
    const double oneLine = lineHeight(fontSize);
    if (width < widestCharacter * fontSize)
        return oneLine; // a line holds at least one character, even a wider one
    const double blackWidth = m_blackWidth * fontSize / m_font.pixelSize();
    return std::max(1.0, std::ceil(blackWidth * brokenLineShare / width)) * oneLine;
}

double OverlayText::boundingHeight(double width, double fontSize, double atMost)
{
    if (lineWidth(fontSize) <= width + widthTolerance)
        return lineHeight(fontSize);
    const double least = leastHeight(width, fontSize);
    if (least > atMost + clearExcess)
        return least;
    const double limit = std::max(0.0, atMost / lineHeight(fontSize)) + 2;
    const int count = breakIntoLines(width * m_font.pixelSize() / fontSize, int(std::min(limit, 1e6)));
    return count * lineHeight(fontSize);
}

/// `width` is in pixels at the reference size. Makes at most `limit` lines.
int OverlayText::breakIntoLines(double width, int limit)
{
    QTextOption option = m_layout.textOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    m_layout.beginLayout();
    int count = 0;
    while (count < limit) {
        QTextLine line = m_layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        ++count;
    }
    m_layout.endLayout();
    return count;
}

/// The longest part of a range that fits with an ellipsis, in whole user-perceived characters.
QString OverlayText::lastLine(int firstCharacter, int endCharacter, double width) const
{
    const QString rest = m_layout.text().mid(firstCharacter, endCharacter - firstCharacter);
    QList<int> ends{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, rest);
    while (finder.toNextBoundary() != -1)
        ends.append(int(finder.position()));

    const auto cutOff = [&](int end) {
        QString text = rest.first(end);
        while (!text.isEmpty() && text.back().isSpace())
            text.chop(1);
        return text + QChar(u'…');
    };
    const auto fits = [&](int end) {
        QTextLayout layout(cutOff(end), m_font);
        layout.setTextOption(m_layout.textOption());
        return singleLine(layout, unlimitedWidth).naturalTextWidth() <= width;
    };
    const auto tooLong = std::partition_point(ends.cbegin() + 1, ends.cend(), fits);
    return cutOff(*(tooLong - 1));
}

void OverlayText::drawLine(QPainter &painter, const QTextLine &line, double top, Qt::Alignment alignment) const
{
    const bool isAtRight = m_layout.textOption().alignment() == Qt::AlignRight;
    const double room = line.width() - line.naturalTextWidth();
    const double left = alignment & Qt::AlignHCenter                ? (isAtRight ? -room : room) / 2
                        : alignment == Qt::AlignRight && !isAtRight ? room
                                                                    : 0;
    line.draw(&painter, QPointF(left, top + m_ascent - line.ascent() - line.y()));
}

void OverlayText::draw(QPainter &painter, QPointF topLeft, double width, double fontSize, int lines,
                       double lineDistance, Qt::Alignment alignment)
{
    const double scale = fontSize / m_font.pixelSize();
    const double lineAdvance = lineDistance > 0 ? lineDistance / scale : m_ascent + m_descent;
    painter.save();
    painter.translate(topLeft);
    painter.scale(scale, scale);
    painter.translate(0, -m_emptyTop);
    if (lineWidth(fontSize) <= width + widthTolerance) {
        const QTextLine line = singleLine(m_layout, std::max(width / scale, m_width));
        if (line.isValid())
            drawLine(painter, line, 0, alignment);
    } else {
        // A further line shows that the text is longer.
        const int count = breakIntoLines(width / scale, lines + 1);
        const int whole = count > lines ? lines - 1 : count;
        for (int i = 0; i < whole; ++i)
            drawLine(painter, m_layout.lineAt(i), i * lineAdvance, alignment);
        if (count > lines) {
            const QTextLine next = m_layout.lineAt(lines);
            QTextLayout last(
                lastLine(m_layout.lineAt(whole).textStart(), next.textStart() + next.textLength(), width / scale),
                m_font);
            last.setTextOption(m_layout.textOption());
            drawLine(painter, singleLine(last, width / scale), whole * lineAdvance, alignment);
        }
    }
    painter.restore();
}

} // namespace lucentra
