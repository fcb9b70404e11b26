#include "TextFlow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// More characters than a line can hold, so that a very long paragraph is laid out no further than it is shown.
constexpr int charactersPerLine = 400;
/// How much of the text is shown before a match that stands far behind its beginning.
constexpr qsizetype charactersBeforeMatch = 24;

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

std::unique_ptr<QTextLayout> layoutOf(const QString &text, const TextFlow::Shape &shape, int maxLines)
{
    auto layout = std::make_unique<QTextLayout>(text, shape.font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
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

/// Where the lines that lie between two heights begin and end in their text; nothing where none does.
std::pair<qsizetype, qsizetype> textBetween(const QTextLayout &layout, qreal top, qreal bottom)
{
    int first = 0;
    int end = layout.lineCount();
    for (int count = end; count > 0;) { // the first line that reaches below the top
        const int middle = first + count / 2;
        const QTextLine line = layout.lineAt(middle);
        if (line.y() + line.height() <= top) {
            count -= middle + 1 - first;
            first = middle + 1;
        } else {
            count = middle - first;
        }
    }
    end = first;
    while (end < layout.lineCount() && layout.lineAt(end).y() < bottom)
        ++end;
    if (first == end)
        return {0, 0};
    const QTextLine last = layout.lineAt(end - 1);
    return {layout.lineAt(first).textStart(), last.textStart() + last.textLength()};
}

QString excerptBefore(const QString &text, qsizetype match)
{
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(std::max<qsizetype>(0, match - charactersBeforeMatch));
    if (!words.isAtBoundary())
        words.toNextBoundary();
    return u"…"_s + text.sliced(std::clamp<qsizetype>(words.position(), 0, match));
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
    auto next = matches.begin(); // the first that doesn't end before the paragraph
    for (qsizetype start = 0; !m_isCutOff;) {
        const qsizetype end = endOfParagraph(text, start);
        const bool isLast = end >= text.size();
        addParagraph(text.sliced(start, end - start), isLast, shape);
        while (next != matches.end() && next->start + next->length <= start)
            ++next;
        for (auto match = next; match != matches.end() && match->start < start + m_shownLength; ++match) {
            const qsizetype first = std::max(match->start, start);
            const qsizetype last = std::min(match->start + match->length, start + m_shownLength);
            if (first < last)
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
        // Room for rounding, so that the shortened line isn't wrapped once more.
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
    painter.setPen(color);
    // An entry shown whole may be thousands of lines with a match in each: only those that can be seen cost anything.
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF seen = painter.combinedTransform().inverted().mapRect(device);
    for (const Paragraph &paragraph : m_paragraphs) {
        const QPointF place = origin + QPointF(0, paragraph.top);
        const auto [first, end] = textBetween(*paragraph.layout, seen.top() - place.y(), seen.bottom() - place.y());
        if (first == end)
            continue;
        QList<QTextLayout::FormatRange> formats;
        const auto behind = [](qsizetype position, const TextRange &match) {
            return position < match.start + match.length;
        };
        for (auto match = std::upper_bound(paragraph.matches.begin(), paragraph.matches.end(), first, behind);
             match != paragraph.matches.end() && match->start < end; ++match) {
            QTextLayout::FormatRange range{int(match->start), int(match->length), {}};
            range.format.setBackground(highlight);
            formats.append(range);
        }
        paragraph.layout->draw(&painter, place, formats, seen);
    }
}

} // namespace lucentra
