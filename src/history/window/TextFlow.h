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

/// A text of one or more paragraphs, wrapped to a width. Each paragraph runs in its own writing direction and begins
/// at that direction's side. Sizes are points. Main thread only.
class TextFlow
{
public:
    struct Shape
    {
        QFont font;
        qreal width = 0;
        int maxLines = 0; ///< what comes after is left out, with an ellipsis at the end of the last line
    };

    /// Shows the text from its beginning, or, where the search's first match would be left out, from shortly before
    /// that match.
    TextFlow(const QString &text, const Shape &shape, const HistorySearch &search);

    qreal height() const { return m_height; }
    bool isCutOff() const { return m_isCutOff; }

    /// The matches have the highlight behind them. Only the lines within the painter's device and clip are drawn.
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
