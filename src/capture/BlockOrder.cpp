#include "BlockOrder.h"

#include <QRectF>

#include <algorithm>
#include <functional>
#include <vector>

namespace lucentra {

namespace {

// In ems, which is the height of a line.
constexpr double nearText = 3;        // between a heading and its paragraph
constexpr double farthestBlock = 14;  // between two blocks of a column, such as a picture
constexpr double sideTolerance = 1.6; // by which a heading may be wider than its paragraph
constexpr double sharedPart = 0.6;    // of the narrower block's width
constexpr double farthestEntry = 3;   // between two entries of a list
constexpr size_t leastEntries = 3;    // of a list
constexpr double sameRow = 0.3;       // between the middles

/// A block in pixels, y down.
struct PlacedBlock
{
    QRectF rect;
    double em = 0;
    bool isText = false; ///< a paragraph, or a heading or caption of one
};

double sharedOf(double firstA, double lastA, double firstB, double lastB)
{
    return std::min(lastA, lastB) - std::max(firstA, firstB);
}

double sharedWidth(const QRectF &a, const QRectF &b)
{
    return sharedOf(a.left(), a.right(), b.left(), b.right());
}

double sharedHeight(const QRectF &a, const QRectF &b)
{
    return sharedOf(a.top(), a.bottom(), b.top(), b.bottom());
}

double gapBetween(const QRectF &a, const QRectF &b)
{
    return -sharedHeight(a, b);
}

/// Whether two blocks can be in one column.
bool areInLine(const PlacedBlock &a, const PlacedBlock &b)
{
    const QRectF &narrow = a.rect.width() < b.rect.width() ? a.rect : b.rect;
    const QRectF &wide = a.rect.width() < b.rect.width() ? b.rect : a.rect;
    const double tolerance = sideTolerance * std::min(a.em, b.em);
    return narrow.left() >= wide.left() - tolerance && narrow.right() <= wide.right() + tolerance &&
           sharedWidth(a.rect, b.rect) >= sharedPart * narrow.width();
}

using TextColumnBlocks = std::vector<qsizetype>; // from the top

class BlockOrder
{
public:
    BlockOrder(const QList<TextBlock> &blocks, const QSizeF &size)
    {
        for (const TextBlock &block : blocks) {
            const double em = block.lineHeight > 0 ? block.lineHeight : block.normBox.height;
            m_blocks.push_back({block.normBox.in(size), std::max(1.0, em * size.height()), block.lineCount > 1});
        }
        findHeadings();
        m_columns = columnsOf(true);
        const std::vector<TextColumnBlocks> texts = m_columns;
        for (const TextColumnBlocks &list : tablesOf(columnsOf(false))) {
            if (std::any_of(texts.begin(), texts.end(), [&](const auto &text) { return isIndependent(list, text); }))
                m_columns.push_back(list);
        }
    }

    std::vector<qsizetype> order()
    {
        std::vector<qsizetype> order;
        std::vector<bool> isDone(m_columns.size(), false);
        const std::function<void(size_t)> emitColumn = [&](size_t column) {
            if (isDone[column])
                return;
            isDone[column] = true;
            for (size_t other = 0; other < m_columns.size(); ++other) {
                if (precedes(m_columns[other], m_columns[column]))
                    emitColumn(other);
            }
            order.insert(order.end(), m_columns[column].begin(), m_columns[column].end());
        };
        for (qsizetype i = 0; i < qsizetype(m_blocks.size()); ++i) {
            const auto column = std::find_if(m_columns.begin(), m_columns.end(), [i](const TextColumnBlocks &each) {
                return std::find(each.begin(), each.end(), i) != each.end();
            });
            if (column == m_columns.end())
                order.push_back(i);
            else
                emitColumn(size_t(column - m_columns.begin()));
        }
        return order;
    }

private:
    void findHeadings()
    {
        std::vector<PlacedBlock> paragraphs;
        std::copy_if(m_blocks.begin(), m_blocks.end(), std::back_inserter(paragraphs),
                     [](const PlacedBlock &block) { return block.isText; });
        for (PlacedBlock &block : m_blocks) {
            block.isText = block.isText || std::any_of(paragraphs.begin(), paragraphs.end(), [&](const auto &text) {
                               const double gap = gapBetween(block.rect, text.rect);
                               return block.rect.width() <= text.rect.width() + 2 * text.em && gap >= 0 &&
                                      gap <= nearText * text.em && areInLine(block, text);
                           });
        }
    }

    /// The columns of paragraphs, or the lists of other blocks.
    std::vector<TextColumnBlocks> columnsOf(bool areTexts) const
    {
        std::vector<qsizetype> fromTop;
        for (qsizetype i = 0; i < qsizetype(m_blocks.size()); ++i) {
            if (m_blocks[i].isText == areTexts)
                fromTop.push_back(i);
        }
        std::stable_sort(fromTop.begin(), fromTop.end(),
                         [this](qsizetype a, qsizetype b) { return m_blocks[a].rect.top() < m_blocks[b].rect.top(); });
        std::vector<TextColumnBlocks> columns;
        for (const qsizetype index : fromTop) {
            const auto column = std::find_if(columns.begin(), columns.end(), [&](const TextColumnBlocks &each) {
                return continues(each.back(), index, areTexts ? farthestBlock : farthestEntry);
            });
            if (column == columns.end())
                columns.push_back({index});
            else
                column->push_back(index);
        }
        if (!areTexts)
            std::erase_if(columns, [](const TextColumnBlocks &list) { return list.size() < leastEntries; });
        return columns;
    }

    /// How many blocks of a column are on a row with one of the other's.
    size_t sharedRows(const TextColumnBlocks &column, const TextColumnBlocks &other) const
    {
        return size_t(std::count_if(column.begin(), column.end(), [&](qsizetype a) {
            return std::any_of(other.begin(), other.end(), [&](qsizetype b) {
                const QRectF &text = m_blocks[b].rect;
                const double middle = m_blocks[a].rect.center().y();
                const double tolerance = sameRow * m_blocks[a].em;
                return std::abs(middle - text.center().y()) <= tolerance ||
                       std::abs(middle - text.top() - m_blocks[b].em / 2) <= tolerance;
            });
        }));
    }

    /// Lists that have rows in common as one, by rows.
    std::vector<TextColumnBlocks> tablesOf(const std::vector<TextColumnBlocks> &lists) const
    {
        std::vector<TextColumnBlocks> tables;
        for (const TextColumnBlocks &list : lists) {
            const auto table = std::find_if(tables.begin(), tables.end(),
                                            [&](const auto &each) { return 2 * sharedRows(list, each) > list.size(); });
            if (table == tables.end()) {
                tables.push_back(list);
            } else {
                table->insert(table->end(), list.begin(), list.end());
                std::sort(table->begin(), table->end());
            }
        }
        return tables;
    }

    /// Whether a list is beside a text without being on its paragraphs' rows as labels and values are.
    bool isIndependent(const TextColumnBlocks &list, const TextColumnBlocks &text) const
    {
        return (precedes(list, text) || precedes(text, list)) && 2 * sharedRows(list, text) <= list.size();
    }

    /// Whether a block follows another in the same column, and no other block is between them.
    bool continues(qsizetype upper, qsizetype lower, double farthest) const
    {
        const QRectF &above = m_blocks[upper].rect;
        const QRectF &below = m_blocks[lower].rect;
        const double em = std::max(m_blocks[upper].em, m_blocks[lower].em);
        if (!areInLine(m_blocks[upper], m_blocks[lower]) || below.top() < above.bottom() - em / 2 ||
            below.top() - above.bottom() > farthest * em)
            return false;
        const QRectF between(QPointF(std::max(above.left(), below.left()), above.bottom()),
                             QPointF(std::min(above.right(), below.right()), below.top()));
        return between.isEmpty() || std::none_of(m_blocks.begin(), m_blocks.end(), [&](const PlacedBlock &other) {
                   return between.contains(QPointF(between.center().x(), other.rect.center().y())) &&
                          sharedWidth(other.rect, between) > 0;
               });
    }

    bool precedes(const TextColumnBlocks &left, const TextColumnBlocks &right) const
    {
        bool areBeside = false;
        for (const qsizetype a : left) {
            for (const qsizetype b : right) {
                if (m_blocks[a].rect.right() > m_blocks[b].rect.left())
                    return false;
                const double shared = sharedHeight(m_blocks[a].rect, m_blocks[b].rect);
                areBeside = areBeside || shared > m_blocks[a].em / 2;
            }
        }
        return areBeside;
    }

    std::vector<PlacedBlock> m_blocks;
    std::vector<TextColumnBlocks> m_columns;
};

} // namespace

QList<TextBlock> inColumnOrder(const QList<TextBlock> &blocks, const QSizeF &imageSize)
{
    QList<TextBlock> ordered;
    for (const qsizetype index : BlockOrder(blocks, imageSize).order())
        ordered.append(blocks[index]);
    return ordered;
}

} // namespace lucentra
