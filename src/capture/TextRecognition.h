#pragma once

#include "TextBlock.h"
#include "TextRecognizer.h"

#include <QImage>
#include <QList>

namespace lucentra {

/// Lines lower than this fraction of the image's height are not looked for.
inline constexpr double minimumTextHeight = 0.008;

/// What a pass asks of the recognizer: accurate, with language correction, for the languages that screens show.
TextRecognitionRequest passRequest();

/// The observations that are text: without letter or digit, or of one character that is no word of its own, they are
/// noise. Order and spelling stay.
QList<TextBlock> blocksFromObservations(const QList<RecognizedTextObservation> &observations);

struct RecognizedBlocks
{
    QList<TextBlock> blocks;
    bool areLinesLeftOut = false; ///< they would have taken too long
};

/// The lines of a captured image. Blocks, on any thread but the main one. A recognizer that fails has found nothing.
RecognizedBlocks recognizeBlocks(TextRecognizer &recognizer, const QImage &image, std::function<bool()> isWanted = {});

} // namespace lucentra
