#include "Paragraphs.h"

#include "BlockOrder.h"
#include "LineRuns.h"
#include "LineText.h"
#include "TextRecognition.h"

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

/// Lists and menus are set wider than this, and few texts are. Those must be clearer.
constexpr double wideDistance = 1.72;
/// The lines of a subtitle, and centred lines of one sentence, are closer than this.
constexpr double subtitleDistance = 1.6;
constexpr double centredDistance = 1.75;
/// Narrower columns hold labels.
constexpr double narrowestColumn = 8;
constexpr double narrowestText = 5; ///< with the marks of sentences
constexpr double ordinaryColumn = 12;
constexpr double widestCell = 22;
constexpr double wideColumn = 20;
constexpr size_t enoughLines = 4; ///< to see where a column ends
constexpr size_t manyLines = 12;  ///< one line of another kind among them makes no difference
/// The part of a text's lines that must reach the end of the column.
constexpr double mostLines = 0.6;
constexpr int fewSpaces = 3; ///< of a line whose sentence ends with a word or two below
/// A line that is at least this long can be a sentence of a subtitle.
constexpr double shortestSubtitle = 4.5;
constexpr double longSubtitle = 8.5; ///< without any mark
/// How far the centre of lines of one width may be from that of the image, a fraction of its width.
constexpr double middleOfImage = 0.03;

class Paragraphs
{
public:
    Paragraphs(const QList<TextLine> &lines, const QSizeF &imageSize,
               const std::function<bool(const QString &)> &isPhrase);

    /// `ofLines` has a block per line.
    QList<TextBlock> blocks(QList<TextBlock> ofLines) const;

private:
    struct Column
    {
        double end = 0;            ///< the greatest x that its lines may have reached, pixels
        double width = 0;          ///< ems
        bool isText = false;       ///< rather than a list or verse
        bool hasMarks = false;     ///< of sentences
        bool isCased = false;      ///< most lines begin with a letter that has a case
        bool hasLowerCase = false; ///< of these, some with a small one
        bool isLowerCase = false;  ///< all lines, of which there are several
        bool hasCode = false;
        int open = 0; ///< lines that don't end a sentence
    };

    /// Whether each line but the first continues the one above it. Leaves one link if there is no doubt.
    std::vector<bool> continuations(const Run &run, Links &kind) const;
    std::vector<bool> centredContinuations(const Run &run) const;
    Column columnOf(const Run &run) const;
    bool isContinuation(const Line &upper, const Line &lower, const Run &run, const Column &column) const;
    bool isPhrase(const Line &line) const;
    bool isAlone(const Run &run) const;
    bool isAmongCode(const Run &run) const;
    double columnEnd(const Run &run) const;
    bool reachesFarther(const Line &line, const Run &run) const;
    TextBlock block(const Run &lines, Links kind) const;

    const QSizeF m_size;
    const std::function<bool(const QString &)> &m_isPhrase;
    const PlacedLines m_placed;
    const std::vector<Line> &m_lines;
    QString m_page; ///< all texts
};

Paragraphs::Paragraphs(const QList<TextLine> &lines, const QSizeF &imageSize,
                       const std::function<bool(const QString &)> &isPhrase)
    : m_size(imageSize)
    , m_isPhrase(isPhrase)
    , m_placed(lines, imageSize)
    , m_lines(m_placed.lines())
{
    for (const TextLine &line : lines)
        m_page += u' ' + line.text;
}

/// The greatest x that a line of the column may have reached. If there are few lines, those above and below them count,
/// too, if they are in the same column.
double Paragraphs::columnEnd(const Run &run) const
{
    double end = 0;
    for (const Line *line : run)
        end = std::max(end, line->rect.right());
    const QRectF &last = run.back()->rect;
    if (run.size() >= enoughLines)
        return end;
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
    const bool isIdeograph = isIdeographic(word[0]);
    const double pixelsPerEm = isIdeograph ? lower.em() : lower.rect.width() / std::max(0.1, advance(lower.text));
    // A mark at the line's end is as wide as a character, but its ink isn't.
    const double needed = (advance(word) + (isIdeograph ? 0.7 : 0.3)) * pixelsPerEm;
    return upper.rect.right() + needed > end;
}

/// Whether lines with common edges and centres are rather centred.
bool areCentred(const Run &run)
{
    const auto spread = [&](auto place) {
        const auto [least, most] = std::minmax_element(
            run.begin(), run.end(), [&](const Line *a, const Line *b) { return place(a->rect) < place(b->rect); });
        return place((*most)->rect) - place((*least)->rect);
    };
    return spread([](const QRectF &rect) { return rect.center().x(); }) <
           spread([](const QRectF &rect) { return rect.left(); });
}

std::vector<bool> Paragraphs::continuations(const Run &run, Links &kind) const
{
    std::vector<bool> result(run.size(), false);
    if (run.size() < 2)
        return result;
    // The lines of a subtitle can have one width.
    const double middle = run.front()->rect.center().x() / m_size.width();
    const bool isInMiddle = std::abs(middle - 0.5) < middleOfImage;
    const Column column = columnOf(run);
    if (!(kind & Left) || (kind & Centre && (isInMiddle || run.size() > 2)))
        result = centredContinuations(run);
    const bool isCentred = isInMiddle || (column.width < ordinaryColumn && areCentred(run));
    if (result.back() && kind & Centre && isCentred)
        kind = Centre;
    if (!(kind & Left) || result.back())
        return result;
    const bool isText = run.size() > 2 && column.isText && column.hasMarks;
    if (column.hasCode || (!isText && isAmongCode(run)))
        return result;
    const bool canBeNarrow = (isText && endsSentence(run.back()->text)) || column.isLowerCase;
    const bool isWide = column.width >= (canBeNarrow ? narrowestText : narrowestColumn);
    for (size_t i = 1; i < run.size(); ++i) {
        const Line &upper = *run[i - 1];
        const Line &lower = *run[i];
        result[i] = isBrokenWord(upper.text, lower.text) || (isWide && isContinuation(upper, lower, run, column));
    }
    return result;
}

/// What the lines of a run look like together.
Paragraphs::Column Paragraphs::columnOf(const Run &run) const
{
    Column column{.end = columnEnd(run)};
    column.width = (column.end - run.back()->rect.left()) / run.front()->em();
    int full = 0;
    int cased = 0;
    int lowerCase = 0;
    int code = 0;
    bool hasFigures = false; // as entries have
    for (size_t i = 0; i < run.size(); ++i) {
        const Line &line = *run[i];
        code += isCode(line.text) ? 1 : 0;
        hasFigures = hasFigures || u"0123456789])"_s.contains(line.text.right(1));
        column.hasMarks = column.hasMarks || hasSentenceMarks(line.text);
        if (i == 0 || endsSentence(run[i - 1]->text) || hasListMark(line.text))
            continue;
        // A heading or what follows the text may be at the run's ends.
        const bool isFullLine = isFull(*run[i - 1], line, column.end);
        const bool isAtEnd = run.size() > 2 && (i == 1 || i + 1 == run.size());
        column.open += isFullLine || !isAtEnd ? 1 : 0;
        full += isFullLine ? 1 : 0;
        const auto letter = firstLetter(line.text);
        cased += letter && hasCase(*letter) ? 1 : 0;
        lowerCase += letter && letter->isLower() ? 1 : 0;
    }
    column.isCased = cased * 2 > column.open;
    column.hasLowerCase = lowerCase > 0;
    column.isLowerCase = lowerCase > 1 && lowerCase == column.open && !hasFigures;
    column.hasCode = code * 4 > int(run.size());
    const bool isList = full < mostLines * column.open || (run.size() > 2 && column.open == 0);
    column.isText = !isList;
    return column;
}

bool Paragraphs::isContinuation(const Line &upper, const Line &lower, const Run &run, const Column &column) const
{
    const auto isNoText = [&](const QString &text) { return (run.size() < 3 && isCode(text)) || isMostlyDigits(text); };
    const bool isText = run.size() > 2 && column.isText && column.hasMarks;
    const bool endsBefore = endsSentence(upper.text);
    if (!isFull(upper, lower, column.end) || isNoText(upper.text) || isNoText(lower.text) || hasListMark(lower.text) ||
        isComplete(upper.text, lower.text) ||
        (endsBefore && !hasSentenceMarks(lower.text) && !(isText && column.open > 1)))
        return false;
    if (hasListMark(upper.text) && lower.rect.left() - upper.rect.left() >= leastIndent * upper.em())
        return true;
    const bool isPassage = (isText && column.open > 1) || column.isLowerCase;
    if (run.size() > 2 && !isPassage && upper.hasNeighbour && lower.hasNeighbour && column.width < widestCell)
        return false;
    const auto spaces = upper.text.count(u' ');
    const bool isEnd = column.hasMarks && !endsBefore && endsSentence(lower.text);
    const bool continues = beginsInLowerCase(lower.text)
                               ? spaces >= fewSpaces || (spaces > 0 && (column.hasMarks || lower.text.contains(u' ')))
                               : isEnd && spaces >= fewSpaces;
    const bool isLong = upper.rect.width() >= wideColumn * upper.em();
    const bool isSure = column.isCased ? (run.size() > 2 ? column.hasLowerCase : continues) : column.hasMarks;
    if (distance(*run[0], *run[1]) > wideDistance * upper.em())
        return column.isText && column.width >= ordinaryColumn && isSure && (run.size() > 2 || !endsBefore);
    if (run.size() > 2 && column.width >= ordinaryColumn)
        return column.isText && isSure;
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
    double farthest = 0;
    bool isSpoken = true;
    bool isLong = true;
    bool hasMarks = false;
    bool isAmongOthers = false;
    size_t lowerCase = 0;
    size_t sentences = 0;
    size_t wrapped = 0;
    const double widest = (*std::max_element(run.begin(), run.end(), [](const Line *a, const Line *b) {
                              return a->rect.width() < b->rect.width();
                          }))->rect.width();
    for (size_t i = 0; i < run.size(); ++i) {
        const Line &line = *run[i];
        const auto letter = firstLetter(line.text);
        lowerCase += i > 0 && beginsInLowerCase(line.text) ? 1 : 0;
        const bool isLatin = letter && hasCase(*letter);
        farthest = i == 0 ? 0 : std::max(farthest, distance(*run[i - 1], line) / line.em());
        isSpoken =
            isSpoken && line.rect.width() >= shortestSubtitle * line.em() && (!isLatin || line.text.count(u' ') >= 2);
        isLong = isLong && !isLatin && line.rect.width() >= longSubtitle * line.em();
        hasMarks = hasMarks || hasSentenceMarks(line.text);
        sentences += endsSentence(line.text) ? 1 : 0;
        wrapped += i > 0 && isFull(*run[i - 1], line, run[i - 1]->rect.left() + widest) ? 1 : 0;
        isAmongOthers = isAmongOthers || line.hasNeighbour;
        if (isCode(line.text) || isMostlyDigits(line.text) || hasListMark(line.text) ||
            (i > 0 && isComplete(run[i - 1]->text, line.text)))
            return result;
    }
    // Without a mark two lines are as likely the entries of a menu.
    const bool isSubtitle = run.size() == 2 && farthest <= subtitleDistance && !isAmongOthers && isSpoken &&
                            (hasMarks || isLong) && isAlone(run);
    // Two lines can be divided anywhere, more are verse unless they are wrapped.
    const bool isWrapped = run.size() == 2 || double(wrapped) >= mostLines * double(run.size() - 1);
    const bool isSentence = (endsSentence(run.back()->text) && hasMarks && sentences * 2 <= run.size() && isWrapped) ||
                            lowerCase * 2 >= run.size();
    std::fill(result.begin() + 1, result.end(), isSubtitle || (isSentence && farthest <= centredDistance));
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
    block.normBox = NormBox::of(area, m_size);
    // Misread letters make a box higher more often than lower.
    block.lineHeight = heights[(heights.size() - 1) / 2] / m_size.height();
    block.lineCount = int(lines.size());
    block.lineDistance = distance(*lines.front(), *lines.back()) / double(lines.size() - 1) / m_size.height();
    block.alignment = kind & Left ? Qt::AlignLeft : kind & Centre ? Qt::AlignHCenter : Qt::AlignRight;
    return block;
}

/// Whether the run from a line of another run goes on below that one.
bool Paragraphs::reachesFarther(const Line &line, const Run &run) const
{
    Links kind;
    return m_placed.runFrom(line, kind).back()->rect.top() > run.back()->rect.top();
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
        const Run run = m_placed.runFrom(m_lines[top], kind);
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
            } else if (next != run.end() && run.size() < manyLines &&
                       (run.end() - next >= qsizetype(enoughLines) || reachesFarther(**next, run))) {
                break; // which may be a paragraph below a line of another kind
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
