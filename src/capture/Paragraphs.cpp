#include "Paragraphs.h"

#include "BlockOrder.h"
#include "LineText.h"
#include "TextRecognition.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

using namespace lines;

namespace {

// Lengths are in ems, which is the height of a line, unless stated otherwise.

/// Heights of lines of one size differ by no more than this factor.
constexpr double sameSize = 1.1;
/// In pixels.
constexpr double rounding = 0.7;
/// Edges and centres that are no farther apart count as equal.
constexpr double sameEdge = 0.55;
/// The first line of a paragraph may be indented by this much.
constexpr double leastIndent = 0.8;
constexpr double greatestIndent = 4.5;
/// The distance between the centres of two lines of a paragraph.
constexpr double leastDistance = 0.85;
constexpr double greatestDistance = 2.1;
/// Lists and menus are set wider than this, and few texts are. Those must be clearer.
constexpr double wideDistance = 1.72;
constexpr double distanceTolerance = 0.1;
/// Centred lines of one sentence are closer than this.
constexpr double greatestCentredDistance = 1.6;
/// Narrower columns hold labels.
constexpr double narrowestColumn = 8;
constexpr double ordinaryColumn = 12;
constexpr double widestCell = 16;
constexpr double wideColumn = 20;
/// The part of a text's lines that must reach the end of the column, or begin in lower case.
constexpr double mostLines = 0.6;
constexpr double fewLines = 0.4;
constexpr double nearlyAll = 0.9;
/// A line that is at least this long can be a sentence of a subtitle.
constexpr double widestPunctuation = 1.2;
constexpr double shortestSubtitle = 4.5;
constexpr double longSubtitle = 8.5; ///< without any mark
/// How far the centre of lines of one width may be from that of the image, a fraction of its width.
constexpr double middleOfImage = 0.03;

/// Which edges or centres two lines have in common.
enum Link { Left = 1, Centre = 2, Right = 4 };
Q_DECLARE_FLAGS(Links, Link)

/// A recognized line in pixels, y down, and its neighbours.
struct Line
{
    QString text;
    QRectF rect;
    qsizetype below = -1; ///< the next line of its column
    qsizetype above = -1;
    bool hasNeighbour = false;       ///< there is text beside it on its row
    std::vector<qsizetype> pieces{}; ///< the indices of the lines that it is made of, from the left

    double em() const { return std::max(1.0, rect.height()); }
};

class Paragraphs
{
public:
    Paragraphs(const QList<TextLine> &lines, const QSizeF &imageSize,
               const std::function<bool(const QString &)> &isPhrase);

    /// `ofLines` has a block per line.
    QList<TextBlock> blocks(QList<TextBlock> ofLines) const;

private:
    using Run = std::vector<const Line *>; ///< lines of one column with one distance, from the top
    struct Column
    {
        double end = 0;            ///< the greatest x that its lines may have reached, pixels
        double width = 0;          ///< ems
        bool isText = false;       ///< rather than a list or verse
        bool hasMarks = false;     ///< of sentences
        bool isCased = false;      ///< most lines begin with a letter that has a case
        bool hasLowerCase = false; ///< of these, some with a small one
        bool hasCode = false;
    };

    void findColumns();
    double distance(const Line &upper, const Line &lower) const;
    Links links(const Line &upper, const Line &lower, bool isFirst) const;
    Run runFrom(const Line &first, Links &kind) const;
    /// Whether each line but the first continues the one above it.
    std::vector<bool> continuations(const Run &run, Links kind) const;
    std::vector<bool> centredContinuations(const Run &run) const;
    Column columnOf(const Run &run) const;
    bool isContinuation(const Line &upper, const Line &lower, const Run &run, const Column &column) const;
    bool isPhrase(const Line &line) const;
    bool isAlone(const Run &run) const;
    bool isAmongCode(const Run &run) const;
    double columnEnd(const Run &run) const;
    TextBlock block(const Run &lines, Links kind) const;

    const QSizeF m_size;
    const std::function<bool(const QString &)> &m_isPhrase;
    std::vector<Line> m_lines;
    QString m_page; ///< all texts
};

double sharedWidth(const QRectF &a, const QRectF &b)
{
    return std::min(a.right(), b.right()) - std::max(a.left(), b.left());
}

bool areOfOneSize(const Line &a, const Line &b)
{
    return std::max(a.em(), b.em()) <= std::min(a.em(), b.em()) * sameSize + rounding;
}

/// Whether a line was found in two pieces, since its ideographic punctuation is mostly white.
bool isRestOf(const Line &piece, const Line &rest)
{
    static const QRegularExpression white(u"[，。、！？：；」』）]$"_s);
    const double gap = rest.rect.left() - piece.rect.right();
    return areOfOneSize(piece, rest) && gap > 0 && gap <= widestPunctuation * piece.em() &&
           std::abs(piece.rect.center().y() - rest.rect.center().y()) < piece.em() / 4 &&
           (white.match(piece.text).hasMatch() || u"「『（《"_s.contains(rest.text.left(1)));
}

Paragraphs::Paragraphs(const QList<TextLine> &lines, const QSizeF &imageSize,
                       const std::function<bool(const QString &)> &isPhrase)
    : m_size(imageSize)
    , m_isPhrase(isPhrase)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF &box = lines[i].normBox;
        const Line line{.text = lines[i].text.trimmed(),
                        .rect = {box.x() * m_size.width(), (1 - box.y() - box.height()) * m_size.height(),
                                 box.width() * m_size.width(), box.height() * m_size.height()},
                        .pieces = {i}};
        m_page += u' ' + line.text;
        if (!m_lines.empty() && isRestOf(m_lines.back(), line)) {
            m_lines.back().text += line.text;
            m_lines.back().rect |= line.rect;
            m_lines.back().pieces.push_back(i);
        } else {
            m_lines.push_back(line);
        }
    }
    findColumns();
}

void Paragraphs::findColumns()
{
    for (Line &line : m_lines) {
        double nearest = std::numeric_limits<double>::infinity();
        for (qsizetype i = 0; i < qsizetype(m_lines.size()); ++i) {
            const Line &other = m_lines[i];
            if (&other == &line)
                continue;
            const double down = other.rect.center().y() - line.rect.center().y();
            if (std::abs(down) < line.em() / 2)
                line.hasNeighbour = true;
            else if (down > 0 && down < nearest && sharedWidth(line.rect, other.rect) > 0) {
                nearest = down;
                line.below = i;
            }
        }
    }
    for (Line &line : m_lines) {
        if (line.below < 0)
            continue;
        // Two lines above one are two columns above a wide text.
        Line &below = m_lines[line.below];
        below.above = below.above == -1 ? &line - m_lines.data() : -2;
    }
}

double Paragraphs::distance(const Line &upper, const Line &lower) const
{
    return lower.rect.center().y() - upper.rect.center().y();
}

Links Paragraphs::links(const Line &upper, const Line &lower, bool isFirst) const
{
    const double em = std::min(upper.em(), lower.em());
    const double apart = distance(upper, lower) / em;
    if (!areOfOneSize(upper, lower) || apart < leastDistance || apart > greatestDistance)
        return {};
    const double tolerance = sameEdge * em;
    const double left = lower.rect.left() - upper.rect.left();
    const bool isIndented = isFirst && -left >= leastIndent * em && -left <= greatestIndent * em;
    const bool isHanging = isFirst && left > 0 && left <= greatestIndent * em && (hasListMark(upper.text) || (beginsInLowerCase(lower.text) && upper.text.contains(u' ')));
    Links result;
    result.setFlag(Left, std::abs(left) <= tolerance || isHanging || isIndented);
    result.setFlag(Centre, std::abs(lower.rect.center().x() - upper.rect.center().x()) <= tolerance);
    result.setFlag(Right, std::abs(lower.rect.right() - upper.rect.right()) <= tolerance);
    return result;
}

Paragraphs::Run Paragraphs::runFrom(const Line &first, Links &kind) const
{
    Run run{&first};
    kind = Links(Left) | Centre | Right;
    double usual = 0;
    while (run.back()->below >= 0) {
        const Line &upper = *run.back();
        const Line &lower = m_lines[upper.below];
        const Links common = kind & links(upper, lower, run.size() == 1);
        const double apart = distance(upper, lower);
        if (lower.above != &upper - m_lines.data() || !common ||
            (usual > 0 && std::abs(apart - usual) > distanceTolerance * upper.em() + rounding))
            break;
        // A full line above an indented one.
        if (common == Right && lower.below >= 0 && links(lower, m_lines[lower.below], true) & Left)
            break;
        kind = common;
        usual = usual > 0 ? usual : apart;
        run.push_back(&lower);
    }
    return run;
}

/// The greatest x that a line of the column may have reached. The lines above and below the run count, too, if they
/// are in its column.
double Paragraphs::columnEnd(const Run &run) const
{
    double end = 0;
    for (const Line *line : run)
        end = std::max(end, line->rect.right());
    const QRectF &last = run.back()->rect;
    for (const Line &other : m_lines) {
        const double em = run.back()->em();
        const bool isNear =
            other.rect.top() < last.bottom() + 3 * em && other.rect.bottom() > run.front()->rect.top() - 3 * em;
        if (isNear && areOfOneSize(other, *run.back()) && std::abs(other.rect.left() - last.left()) < sameEdge * em)
            end = std::max(end, other.rect.right());
    }
    return end;
}

/// Whether the first word of the lower line would not have fitted at the end of the upper one.
bool isFull(const Line &upper, const Line &lower, double end)
{
    const QStringView word = firstWord(lower.text);
    if (word.isEmpty())
        return false;
    const double pixelsPerEm = lower.rect.width() / std::max(0.1, advance(lower.text));
    const bool isIdeograph = isIdeographic(word[0]);
    // A mark at the line's end is as wide as a character, but its ink isn't.
    const double needed = (advance(word) + (isIdeograph ? 0.7 : 0.3)) * pixelsPerEm;
    return upper.rect.right() + needed > end;
}

std::vector<bool> Paragraphs::continuations(const Run &run, Links kind) const
{
    std::vector<bool> result(run.size(), false);
    if (run.size() < 2)
        return result;
    // The lines of a subtitle can have one width.
    const double middle = run.front()->rect.center().x() / m_size.width();
    if (!(kind & Left) || (run.size() == 2 && kind & Centre && std::abs(middle - 0.5) < middleOfImage))
        result = centredContinuations(run);
    if (!(kind & Left) || result.back())
        return result;
    const Column column = columnOf(run);
    if (column.width < narrowestColumn || column.hasCode || isAmongCode(run))
        return result;
    for (size_t i = 1; i < run.size(); ++i)
        result[i] = isContinuation(*run[i - 1], *run[i], run, column);
    return result;
}

/// What the lines of a run look like together.
Paragraphs::Column Paragraphs::columnOf(const Run &run) const
{
    Column column{.end = columnEnd(run)};
    column.width = (column.end - run.back()->rect.left()) / run.front()->em();
    int full = 0;
    int open = 0; // lines that don't end a sentence
    int cased = 0;
    int lowerCase = 0;
    int code = 0;
    for (size_t i = 0; i < run.size(); ++i) {
        const Line &line = *run[i];
        code += isCode(line.text) ? 1 : 0;
        column.hasMarks = column.hasMarks || hasSentenceMarks(line.text);
        if (i == 0 || endsSentence(run[i - 1]->text) || hasListMark(line.text))
            continue;
        // A heading or what follows the text may be at the run's ends.
        const bool isFullLine = isFull(*run[i - 1], line, column.end);
        const bool isAtEnd = run.size() > 2 && (i == 1 || i + 1 == run.size());
        open += isFullLine || !isAtEnd ? 1 : 0;
        full += isFullLine ? 1 : 0;
        const auto letter = firstLetter(line.text);
        cased += letter && hasCase(*letter) ? 1 : 0;
        lowerCase += letter && letter->isLower() ? 1 : 0;
    }
    column.isCased = cased * 2 > open;
    column.hasLowerCase = lowerCase > 0;
    column.hasCode = code * 4 > int(run.size());
    const bool isList = full < mostLines * open;
    const bool isVerse = column.isCased && cased > 2 && lowerCase < fewLines * cased && full < nearlyAll * open;
    column.isText = !isList && !isVerse;
    return column;
}

bool Paragraphs::isContinuation(const Line &upper, const Line &lower, const Run &run, const Column &column) const
{
    const auto isNoText = [](const QString &text) { return isCode(text) || isMostlyDigits(text); };
    const bool endsBefore = endsSentence(upper.text);
    if (!isFull(upper, lower, column.end) || isNoText(upper.text) || isNoText(lower.text) || hasListMark(lower.text) ||
        isComplete(upper.text, lower.text) || (endsBefore && !hasSentenceMarks(lower.text)))
        return false;
    if (upper.hasNeighbour && lower.hasNeighbour && column.width < widestCell)
        return false;
    const bool continues = beginsInLowerCase(lower.text) && upper.text.contains(u' ');
    const bool isLong = upper.rect.width() >= wideColumn * upper.em();
    if (distance(*run[0], *run[1]) > wideDistance * upper.em())
        return column.isText && column.width >= ordinaryColumn && (column.hasMarks || continues) &&
               (run.size() > 2 || !endsBefore);
    if (run.size() > 2 && column.width >= ordinaryColumn)
        return column.isText && (column.hasMarks || column.hasLowerCase);
    if (column.isCased)
        return continues;
    return !endsBefore && (column.hasMarks || isLong);
}

/// Whether a line is a text by itself rather than the rest of a sentence, which can be a phrase by chance.
bool Paragraphs::isPhrase(const Line &line) const
{
    return m_isPhrase && !beginsInLowerCase(line.text) && !endsSentence(line.text) && m_isPhrase(line.text);
}

/// Whether code is right above or below a run.
bool Paragraphs::isAmongCode(const Run &run) const
{
    const double reach = greatestDistance * run.front()->em();
    const QRectF around = (run.front()->rect | run.back()->rect).adjusted(-2 * reach, -reach, 2 * reach, reach);
    return std::any_of(m_lines.begin(), m_lines.end(),
                       [&](const Line &line) { return line.rect.intersects(around) && isCode(line.text); });
}

/// Whether no other line of the same size is close to a run.
bool Paragraphs::isAlone(const Run &run) const
{
    const double reach = greatestDistance * run.front()->em();
    const QRectF around = (run.front()->rect | run.back()->rect).adjusted(0, -reach, 0, reach);
    return std::none_of(m_lines.begin(), m_lines.end(), [&](const Line &line) {
        return line.rect.intersects(around) && areOfOneSize(line, *run.front()) &&
               std::find(run.begin(), run.end(), &line) == run.end();
    });
}

/// Centred lines end anywhere. They are one sentence if the last one ends it and all are close together.
std::vector<bool> Paragraphs::centredContinuations(const Run &run) const
{
    std::vector<bool> result(run.size(), false);
    bool isClose = run.size() > 1;
    bool isSpoken = true;
    bool isLong = true;
    bool hasMarks = false;
    bool isAmongOthers = false;
    size_t lowerCase = 0;
    for (size_t i = 0; i < run.size(); ++i) {
        const Line &line = *run[i];
        const auto letter = firstLetter(line.text);
        lowerCase += i > 0 && beginsInLowerCase(line.text) ? 1 : 0;
        const bool isLatin = letter && hasCase(*letter);
        isClose = isClose && (i == 0 || distance(*run[i - 1], line) <= greatestCentredDistance * line.em());
        isSpoken =
            isSpoken && line.rect.width() >= shortestSubtitle * line.em() && (!isLatin || line.text.count(u' ') >= 2);
        isLong = isLong && !isLatin && line.rect.width() >= longSubtitle * line.em();
        hasMarks = hasMarks || hasSentenceMarks(line.text);
        isAmongOthers = isAmongOthers || line.hasNeighbour;
        if (isCode(line.text) || isMostlyDigits(line.text) || hasListMark(line.text))
            return result;
    }
    // Without a mark two lines are as likely the entries of a menu.
    const bool isSubtitle = run.size() == 2 && !isAmongOthers && isSpoken && (hasMarks || isLong) && isAlone(run);
    const bool isSentence = (endsSentence(run.back()->text) && hasMarks) || lowerCase * 2 >= run.size();
    std::fill(result.begin() + 1, result.end(), isClose && (isSubtitle || isSentence));
    return result;
}

TextBlock Paragraphs::block(const Run &lines, Links kind) const
{
    TextBlock block;
    QRectF area;
    QList<double> heights;
    for (const Line *line : lines) {
        block.text = block.text.isEmpty() ? line->text : joinedLines(block.text, line->text, m_page);
        area |= line->rect;
        heights.append(line->em());
    }
    std::sort(heights.begin(), heights.end());
    block.normBox = {area.x() / m_size.width(), 1 - area.bottom() / m_size.height(), area.width() / m_size.width(),
                     area.height() / m_size.height()};
    block.lineHeight = heights[heights.size() / 2] / m_size.height();
    block.lineCount = int(lines.size());
    block.lineDistance = distance(*lines.front(), *lines.back()) / double(lines.size() - 1) / m_size.height();
    block.alignment = kind & Left ? Qt::AlignLeft : kind & Centre ? Qt::AlignHCenter : Qt::AlignRight;
    return block;
}

QList<TextBlock> Paragraphs::blocks(QList<TextBlock> ofLines) const
{
    std::vector<qsizetype> fromTop(m_lines.size());
    std::iota(fromTop.begin(), fromTop.end(), 0);
    std::stable_sort(fromTop.begin(), fromTop.end(),
                     [this](qsizetype a, qsizetype b) { return m_lines[a].rect.top() < m_lines[b].rect.top(); });
    std::vector<bool> isDone(m_lines.size(), false);
    std::vector<bool> isJoined(ofLines.size(), false);
    for (const qsizetype top : fromTop) {
        if (isDone[top])
            continue;
        Links kind;
        const Run run = runFrom(m_lines[top], kind);
        const std::vector<bool> continues = continuations(run, kind);
        for (auto first = run.begin(); first != run.end();) {
            // The last line may begin the next run, which has another distance or indent.
            if (first + 1 == run.end() && run.size() > 1)
                break;
            auto next = first + 1;
            while (next != run.end() && continues[next - run.begin()] && !isPhrase(**(next - 1)) && !isPhrase(**next))
                ++next;
            for (auto line = first; line != next; ++line)
                isDone[*line - m_lines.data()] = true;
            if (next - first > 1) {
                for (auto line = first; line != next; ++line) {
                    for (const qsizetype piece : (*line)->pieces)
                        isJoined[piece] = true;
                }
                const qsizetype place = (*first)->pieces.front();
                isJoined[place] = false;
                ofLines[place] = block(Run(first, next), kind);
            }
            first = next;
        }
    }
    QList<TextBlock> blocks;
    for (qsizetype i = 0; i < ofLines.size(); ++i) {
        if (!isJoined[i])
            blocks.append(ofLines[i]);
    }
    return blocks;
}

} // namespace

QList<TextBlock> paragraphsFromLines(const QList<TextLine> &lines, const QSizeF &imageSize,
                                     const std::function<bool(const QString &)> &isPhrase)
{
    return inColumnOrder(Paragraphs(lines, imageSize, isPhrase).blocks(blocksFromLines(lines)), imageSize);
}

} // namespace lucentra
