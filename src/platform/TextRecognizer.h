#pragma once

#include "NormBox.h"
#include "Result.h"

#include <QImage>
#include <QList>
#include <QStringList>

#include <functional>

namespace lucentra {

enum class RecognitionLevel { Fast, Accurate };

struct TextRecognitionRequest
{
    QStringList languages; ///< BCP 47 tags, most expected first
    RecognitionLevel level = RecognitionLevel::Accurate;
    double minimumTextHeight = 0; ///< fraction of the image height; smaller lines are not looked for
    /// Asked now and then, on any thread: once it says false, reading ends as soon as may be, with a part of the lines.
    /// None: everything is read.
    std::function<bool()> isWanted;
    bool isHasty = false; ///< little time is spent on reading doubtful lines again
    /// Called once before reading ends if lines were left out because they would have taken too long; may be empty.
    std::function<void()> onLinesLeftOut;
};

/// One recognized line, or column of vertical text.
struct RecognizedTextObservation
{
    QStringList candidates; ///< readings, best first; may be empty
    NormBox boundingBox;
    bool isVertical = false; ///< a column, written from the top to the bottom

    QStringList topCandidates(qsizetype count) const { return candidates.first(qMin(count, candidates.size())); }
    bool operator==(const RecognizedTextObservation &) const = default;
};

/// Finds and reads the lines of text in an image, on this computer.
class TextRecognizer
{
public:
    virtual ~TextRecognizer() = default;

    /// Loads in the background what nearly every image needs.
    virtual void warmUp() {}

    /// Blocks until every line is read. Any thread, concurrently. The observations are in reading order. Returns an
    /// empty list for an image without text.
    virtual Result<QList<RecognizedTextObservation>> perform(const TextRecognitionRequest &request,
                                                             const QImage &image) = 0;
};

} // namespace lucentra
