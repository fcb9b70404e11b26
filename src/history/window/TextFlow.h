#pragma once

#include "HistorySearch.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPointF>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

class QPainter;

namespace lucentra {

/// A text of one or more paragraphs, wrapped to a width. Each paragraph has its own writing direction and alignment.
/// Sizes are in points.
class TextFlow
{
public:
    struct Shape
    {
        QFont font;
        qreal width = 0;
        int maxLines = 0; ///< further lines are replaced by an ellipsis at the end of the last one
    };

    /// Shows the text from its beginning, or from shortly before the first match of the search if that would be left
    /// out.
    TextFlow(const QString &text, const Shape &shape, const HistorySearch &search);

    qreal height() const { return m_height; }
    bool isCutOff() const { return m_isCutOff; }

    /// Draws the text with highlighted matches. Lines outside the painter's device and clip are skipped.
    void draw(QPainter &painter, QPointF origin, const QColor &color, const QColor &highlight) const;

private:
    struct Paragraph
    {
        std::unique_ptr<QTextLayout> layout;
        qreal top;
        QList<TextRange> matches;
    };

    void layOut(const QString &text, const Shape &shape, const QList<TextRange> &matches);
    void addParagraph(const QString &text, bool isLast, const Shape &shape);

    std::vector<Paragraph> m_paragraphs;
    int m_lineCount = 0;
    qsizetype m_shownLength = 0;
    qreal m_height = 0;
    bool m_isCutOff = false;
};

} // namespace lucentra
