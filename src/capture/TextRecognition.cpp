#include "TextRecognition.h"

#include "Paragraphs.h"
#include "Text.h"
#include "VerticalText.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The first and last code points of kana, the unified ideographs, and what is between them: one character of these
/// can be a word.
constexpr char32_t firstIdeographic = 0x3040;
constexpr char32_t lastIdeographic = 0x9FFF;

char32_t firstScalar(const QString &text)
{
    return text.size() > 1 && text[0].isHighSurrogate() ? QChar::surrogateToUcs4(text[0], text[1])
                                                        : char32_t(text[0].unicode());
}

bool isText(const QString &text)
{
    static const QRegularExpression letterOrDigit(u"[\\p{L}\\p{N}]"_s);
    if (text.isEmpty() || !letterOrDigit.match(text).hasMatch())
        return false;
    if (characterCount(text) != 1)
        return true;
    const char32_t scalar = firstScalar(text);
    return text == "I"_L1 || text == "a"_L1 || text == "A"_L1 ||
           (scalar >= firstIdeographic && scalar <= lastIdeographic);
}

} // namespace

TextRecognitionRequest passRequest()
{
    return {.languages = {u"zh-Hant"_s, u"en-US"_s, u"ja-JP"_s},
            .level = RecognitionLevel::Accurate,
            .minimumTextHeight = minimumTextHeight};
}

QList<TextLine> linesFromObservations(const QList<RecognizedTextObservation> &observations)
{
    QList<TextLine> lines;
    for (const RecognizedTextObservation &observation : observations) {
        const QStringList top = observation.topCandidates(1);
        if (!top.isEmpty() && isText(top.first()))
            lines.append({top.first(), observation.boundingBox, observation.isVertical});
    }
    return lines;
}

QList<TextBlock> blocksFromLines(const QList<TextLine> &lines)
{
    QList<TextBlock> blocks;
    for (const TextLine &line : lines)
        blocks.append({line.text, line.normBox, line.normBox.height});
    return blocks;
}

QList<TextBlock> blocksFromObservations(const QList<RecognizedTextObservation> &observations)
{
    return blocksFromLines(linesFromObservations(observations));
}

QList<TextBlock> composeBlocks(const QList<TextLine> &lines, const QSizeF &imageSize, TextUnit unit,
                               const std::function<bool(const QString &)> &isPhrase)
{
    QList<TextBlock> blocks;
    // Runs of lines and runs of columns are composed separately. There are few of them.
    for (auto first = lines.begin(); first != lines.end();) {
        const bool isVertical = first->isVertical;
        const auto end =
            std::find_if(first, lines.end(), [=](const TextLine &line) { return line.isVertical != isVertical; });
        const QList<TextLine> part(first, end);
        blocks += isVertical                    ? blocksFromColumns(part, imageSize)
                  : unit == TextUnit::Paragraph ? paragraphsFromLines(part, imageSize, isPhrase)
                                                : blocksFromLines(part);
        first = end;
    }
    return blocks;
}

bool hasRunningText(const QList<TextLine> &lines, const QSizeF &imageSize)
{
    constexpr int leastLines = 3;
    const QList<TextBlock> paragraphs = paragraphsFromLines(lines, imageSize);
    return std::any_of(paragraphs.begin(), paragraphs.end(),
                       [](const TextBlock &block) { return block.lineCount >= leastLines; });
}

RecognizedLines recognizeLines(TextRecognizer &recognizer, const QImage &image, const QRect &part,
                               const std::function<bool()> &isWanted, ReadingEffort effort)
{
    TextRecognitionRequest request = passRequest();
    request.isWanted = isWanted;
    RecognizedLines found;
    request.onLinesLeftOut = [&found] { found.areLinesLeftOut = true; };
    if (effort == ReadingEffort::Slight)
        request.level = RecognitionLevel::Fast;
    request.isHasty = effort != ReadingEffort::Full;
    const bool isWhole = part == image.rect() || part.isEmpty();
    if (!isWhole)
        request.minimumTextHeight *= double(image.height()) / part.height();
    const auto observations = recognizer.perform(request, isWhole ? image : image.copy(part));
    if (!observations)
        return found;
    found.lines = linesFromObservations(*observations);
    if (isWhole)
        return found;
    for (TextLine &line : found.lines)
        line.normBox = NormBox::of(line.normBox.in(part.size()).translated(part.topLeft()), image.size());
    return found;
}

} // namespace lucentra
