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
    for (qsizetype start = 0; !m_isCutOff;) {
        const qsizetype end = endOfParagraph(text, start);
        const bool isLast = end >= text.size();
        addParagraph(text.sliced(start, end - start), isLast, shape);
        for (const TextRange &match : matches) {
            const qsizetype first = std::max(match.start, start);
            const qsizetype last = std::min(match.start + match.length, start + m_shownLength);
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
    for (const Paragraph &paragraph : m_paragraphs) {
        QList<QTextLayout::FormatRange> formats;
        for (const TextRange &match : paragraph.matches) {
            QTextLayout::FormatRange range{int(match.start), int(match.length), {}};
            range.format.setBackground(highlight);
            formats.append(range);
        }
        paragraph.layout->draw(&painter, origin + QPointF(0, paragraph.top), formats);
    }
}

} // namespace lucentra
