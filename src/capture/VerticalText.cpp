#include "VerticalText.h"

#include "LineText.h"
#include "TextRecognition.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// In ems, which is the width of a column.
constexpr double farthestColumn = 2.6; // between the centres of two columns
constexpr double likeSize = 1.25;      // ratio
constexpr double likeDistance = 1.3;   // ratio
constexpr double shortColumn = 1.4;
constexpr double leastColumnIndent = 0.6;
constexpr double horizontalDistance = 1.4; // of the translation's lines
/// Fewer or shorter columns are a speech bubble or a heading, which is one text.
constexpr size_t pageColumns = 5;
constexpr double pageHeight = 9;

/// A column in pixels, y down.
struct Column
{
    QString text;
    QRectF rect;

    double em() const { return std::max(1.0, rect.width()); }
};

double distanceOf(const Column &right, const Column &left)
{
    return right.rect.center().x() - left.rect.center().x();
}

bool areOneText(const Column &right, const Column &left)
{
    const double em = std::max(right.em(), left.em());
    const double apart = distanceOf(right, left);
    return em <= likeSize * std::min(right.em(), left.em()) && apart > 0.5 * em && apart <= farthestColumn * em &&
           std::min(right.rect.bottom(), left.rect.bottom()) > std::max(right.rect.top(), left.rect.top());
}

bool endsText(const QString &column)
{
    return !column.isEmpty() && u"。！？!?」』…"_s.contains(column.back());
}

QRectF areaOf(const std::vector<Column> &columns)
{
    QRectF area;
    for (const Column &column : columns)
        area |= column.rect;
    return area;
}

bool arePage(const std::vector<Column> &columns)
{
    return columns.size() >= pageColumns && areaOf(columns).height() >= pageHeight * columns[0].em();
}

/// Whether a paragraph begins with the column at `index`.
bool beginsParagraph(const std::vector<Column> &columns, size_t index)
{
    const Column &before = columns[index - 1];
    const Column &column = columns[index];
    const QRectF area = areaOf(columns);
    const double nearest = distanceOf(columns[0], columns[1]);
    if (distanceOf(before, column) > likeDistance * std::max(nearest, before.em()) && endsText(before.text))
        return true;
    const bool isShort = before.rect.bottom() < area.bottom() - shortColumn * before.em();
    const bool isIndented = column.rect.top() > area.top() + leastColumnIndent * column.em();
    return arePage(columns) && endsText(before.text) && (isShort || isIndented);
}

TextBlock blockOf(const std::vector<Column> &columns, bool isPage, const QSizeF &size)
{
    TextBlock block;
    const QRectF area = areaOf(columns);
    double em = 0;
    for (const Column &column : columns) {
        block.text = lines::joinedLines(block.text, column.text, {});
        em = std::max(em, column.em());
    }
    block.normBox = NormBox::of(area, size);
    block.lineHeight = em / size.height();
    block.lineDistance = horizontalDistance * block.lineHeight;
    block.lineCount = std::max(2, int((area.height() - em) / (horizontalDistance * em)) + 1);
    block.alignment = isPage ? Qt::AlignLeft : Qt::AlignCenter;
    return block;
}

} // namespace

QList<TextBlock> blocksFromColumns(const QList<TextLine> &columns, const QSizeF &imageSize)
{
    QList<TextBlock> blocks;
    std::vector<Column> text;
    const auto finish = [&] {
        std::vector<Column> paragraph;
        for (size_t i = 0; i < text.size(); ++i) {
            if (i > 0 && beginsParagraph(text, i))
                blocks.append(blockOf(std::exchange(paragraph, {}), arePage(text), imageSize));
            paragraph.push_back(text[i]);
        }
        if (!paragraph.empty())
            blocks.append(blockOf(paragraph, arePage(text), imageSize));
        text.clear();
    };
    for (const TextLine &line : columns) {
        const Column column{line.text.trimmed(), line.normBox.in(imageSize)};
        if (!text.empty() && !areOneText(text.back(), column))
            finish();
        text.push_back(column);
    }
    finish();
    return blocks;
}

} // namespace lucentra
