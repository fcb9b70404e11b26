#pragma once

#include "Settings.h"
#include "TextBlock.h"
#include "TextRecognizer.h"

#include <QImage>
#include <QList>

namespace lucentra {

/// The minimum height of lines as a fraction of the image's height.
inline constexpr double minimumTextHeight = 0.008;

/// The request of a pass: accurate, with language correction.
TextRecognitionRequest passRequest();

/// A line of text that recognition found.
struct TextLine
{
    QString text;            ///< exactly as recognized
    NormBox normBox;         ///< in the captured image
    bool isVertical = false; ///< a column

    bool operator==(const TextLine &) const = default;
};

/// Drops observations that are noise: those without a letter or digit, and single characters that aren't words. Keeps
/// order and spelling.
QList<TextLine> linesFromObservations(const QList<RecognizedTextObservation> &observations);
/// Composes the blocks that are translated: each line is one.
QList<TextBlock> blocksFromLines(const QList<TextLine> &lines);
/// Both steps.
QList<TextBlock> blocksFromObservations(const QList<RecognizedTextObservation> &observations);

/// Composes the blocks of that unit. The columns of vertical text are always joined, since a column has no place for a
/// translation. `isPhrase` is as for `paragraphsFromLines`.
QList<TextBlock> composeBlocks(const QList<TextLine> &lines, const QSizeF &imageSize, TextUnit unit,
                               const std::function<bool(const QString &)> &isPhrase = {});
/// Whether there is running text among the lines, whose sentences are better translated in paragraphs.
bool hasRunningText(const QList<TextLine> &lines, const QSizeF &imageSize);

enum class ReadingEffort {
    Full,
    Hasty,  ///< little time for doubtful lines
    Slight, ///< they aren't read twice. What seems to be a line in a moving picture mostly isn't text.
};

struct RecognizedLines
{
    QList<TextLine> lines;
    bool areLinesLeftOut = false; ///< some lines were not read for lack of time
};

/// Recognizes the lines in a part of a captured image (pixels); their boxes are fractions of the whole image. Blocks;
/// any thread but the main one. Returns no lines if the recognizer fails.
RecognizedLines recognizeLines(TextRecognizer &recognizer, const QImage &image, const QRect &part,
                               const std::function<bool()> &isWanted = {}, ReadingEffort effort = ReadingEffort::Full);

} // namespace lucentra
