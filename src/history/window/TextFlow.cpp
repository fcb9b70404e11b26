#include "TextFlow.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// More characters than fit into a line. Limits how much of a very long paragraph is laid out.
constexpr int charactersPerLine = 400;
/// How much of the text is shown before a match that is far from the beginning.
constexpr qsizetype charactersBeforeMatch = 24;
/// In UTF-16 units. A paragraph with a longer word is wrapped between any two characters.
constexpr qsizetype longestWord = 10'000;
/// Highlights that are not farther apart are joined.
constexpr qreal touchingDistance = 0.05;

bool endsParagraph(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

qsizetype endOfParagraph(const QString &text, qsizetype start)
{
    const auto end = std::find_if(text.cbegin() + start, text.cend(), endsParagraph);
    return end - text.cbegin();
}

qsizetype afterLineBreak(const QString &text, qsizetype end)
{
    return end + (QStringView(text).sliced(end).startsWith(u"\r\n") ? 2 : 1);
}

void wrap(QTextLayout &layout, qreal width, int maxLines)
{
    layout.beginLayout();
    qreal y = 0;
    for (int i = 0; i < maxLines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += line.height();
    }
    layout.endLayout();
}

/// Whether a word is so long that the toolkit, which searches its end for each line, would need seconds.
bool hasVeryLongWord(const QString &text)
{
    if (text.size() <= longestWord)
        return false;
    QTextBoundaryFinder places(QTextBoundaryFinder::Line, text);
    for (qsizetype start = 0, end = places.toNextBoundary(); end > start; end = places.toNextBoundary()) {
        if (end - start > longestWord)
            return true;
        start = end;
    }
    return false;
}

std::unique_ptr<QTextLayout> layoutOf(const QString &text, const TextFlow::Shape &shape, int maxLines)
{
    auto layout = std::make_unique<QTextLayout>(text, shape.font);
    QTextOption option;
    option.setWrapMode(hasVeryLongWord(text) ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setAlignment(text.isRightToLeft() ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeft | Qt::AlignAbsolute);
    layout->setTextOption(option);
    wrap(*layout, shape.width, maxLines);
    return layout;
}

qsizetype endOf(const QTextLayout &layout)
{
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    return last.textStart() + last.textLength();
}

QString excerptBefore(const QString &text, qsizetype match)
{
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(std::max<qsizetype>(0, match - charactersBeforeMatch));
    if (!words.isAtBoundary())
        words.toNextBoundary();
    return u"…"_s + text.sliced(std::clamp<qsizetype>(words.position(), 0, match));
}

/// A rectangle that contains the visible part, in the painter's coordinates.
QRectF exposedRect(const QPainter &painter)
{
    const QRectF device = painter.worldTransform().inverted().mapRect(QRectF(painter.window()));
    return painter.hasClipping() ? device & painter.clipBoundingRect() : device;
}

int firstLineBelow(const QTextLayout &layout, qreal y)
{
    int first = 0;
    for (int count = layout.lineCount(); count > 0;) {
        const int half = count / 2;
        const QTextLine line = layout.lineAt(first + half);
        const bool isAbove = line.y() + line.height() <= y;
        first += isAbove ? half + 1 : 0;
        count = isAbove ? count - half - 1 : half;
    }
    return first;
}

/// The highlights of a line. A match with both writing directions may have several rectangles.
QList<QRectF> highlightsOf(const QTextLine &line, const QList<TextRange> &matches)
{
    const qsizetype lineStart = line.textStart();
    const qsizetype lineEnd = lineStart + line.textLength();
    QList<QRectF> rects;
    auto match = std::partition_point(matches.cbegin(), matches.cend(),
                                      [&](const TextRange &each) { return each.start + each.length <= lineStart; });
    for (; match != matches.cend() && match->start < lineEnd; ++match) {
        const qsizetype end = std::min(match->start + match->length, lineEnd);
        const qsizetype start = std::max(match->start, lineStart);
        const QList<QGlyphRun> runs = line.glyphRuns(int(start), int(end - start));
        for (const QGlyphRun &run : runs) {
            const QRectF glyphs = run.boundingRect();
            const QRectF rect(glyphs.left(), line.y(), glyphs.width(), line.height());
            const bool touches = !rects.isEmpty() && rect.left() <= rects.last().right() + touchingDistance &&
                                 rect.right() >= rects.last().left() - touchingDistance;
            if (touches)
                rects.last() |= rect;
            else if (!rect.isEmpty())
                rects.append(rect);
        }
    }
    return rects;
}

} // namespace

TextFlow::TextFlow(const QString &text, const Shape &shape, const HistorySearch &search)
{
    const QList<TextRange> matches = search.rangesIn(text);
    layOut(text, shape, matches);
    if (!m_isCutOff || matches.isEmpty() || matches.first().start + matches.first().length <= m_shownLength)
        return;
    const QString excerpt = excerptBefore(text, matches.first().start);
    layOut(excerpt, shape, search.rangesIn(excerpt));
}

void TextFlow::layOut(const QString &text, const Shape &shape, const QList<TextRange> &matches)
{
    m_paragraphs.clear();
    m_lineCount = 0;
    m_height = 0;
    m_isCutOff = false;
    auto match = matches.cbegin();
    for (qsizetype start = 0; !m_isCutOff;) {
        const qsizetype end = endOfParagraph(text, start);
        const bool isLast = end >= text.size();
        addParagraph(text.sliced(start, end - start), isLast, shape);
        while (match != matches.cend() && match->start + match->length <= start)
            ++match;
        for (auto each = match; each != matches.cend() && each->start < start + m_shownLength; ++each) {
            const qsizetype first = std::max(each->start, start);
            const qsizetype last = std::min(each->start + each->length, start + m_shownLength);
            m_paragraphs.back().matches.append({first - start, last - first});
        }
        m_shownLength += start;
        if (isLast)
            break;
        start = afterLineBreak(text, end);
    }
}

void TextFlow::addParagraph(const QString &text, bool isLast, const Shape &shape)
{
    const int room = shape.maxLines - m_lineCount;
    const QString beginning = text.left(qsizetype(room) * charactersPerLine);
    auto layout = layoutOf(beginning, shape, room);
    m_shownLength = layout->lineCount() > 0 ? endOf(*layout) : 0;
    m_lineCount += layout->lineCount();
    m_isCutOff = m_shownLength < text.size() || (!isLast && m_lineCount >= shape.maxLines);
    if (m_isCutOff) {
        const qsizetype lastLine = layout->lineAt(layout->lineCount() - 1).textStart();
        const QString rest =
            beginning.sliced(lastLine, std::min<qsizetype>(charactersPerLine, beginning.size() - lastLine));
        // Leaves room for rounding, so that the shortened line isn't wrapped again.
        const QString shortened =
            QFontMetricsF(shape.font).elidedText(rest.trimmed() + u"…"_s, Qt::ElideRight, shape.width - 2);
        m_shownLength = lastLine + shortened.size() - 1;
        layout = layoutOf(beginning.left(lastLine) + shortened, shape, room);
    }
    const qreal height = layout->boundingRect().height();
    m_paragraphs.push_back({std::move(layout), m_height, {}});
    m_height += height;
}

void TextFlow::draw(QPainter &painter, QPointF origin, const QColor &color, const QColor &highlight) const
{
    const QRectF exposed = exposedRect(painter).translated(-origin);
    const auto paragraph = std::partition_point(m_paragraphs.cbegin(), m_paragraphs.cend(), [&](const Paragraph &each) {
        return each.top + each.layout->boundingRect().height() <= exposed.top();
    });
    painter.setPen(color);
    for (auto each = paragraph; each != m_paragraphs.cend() && each->top < exposed.bottom(); ++each) {
        const QPointF corner = origin + QPointF(0, each->top);
        for (int i = firstLineBelow(*each->layout, exposed.top() - each->top); i < each->layout->lineCount(); ++i) {
            const QTextLine line = each->layout->lineAt(i);
            if (each->top + line.y() >= exposed.bottom())
                break;
            for (const QRectF &rect : highlightsOf(line, each->matches))
                painter.fillRect(rect.translated(corner), highlight);
            line.draw(&painter, corner);
        }
    }
}

} // namespace lucentra
