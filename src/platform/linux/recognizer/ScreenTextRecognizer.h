#pragma once

#include "TextRecognizer.h"

#include <chrono>
#include <memory>

namespace lucentra {

class LineReader;
class ReaderPool;
class TextNet;
struct ReadColumns;
struct ReadLine;
struct SureMap;

/// Reads the text of screens with the nets of Tesseract's models, behind a line finder made for screens.
///
/// Four stages, each a folder: find (a small network sees where lines are), strip (a line as dark letters on white),
/// read (by the model that its script asks for), judge (is it writing at all).
class ScreenTextRecognizer : public TextRecognizer
{
public:
    struct Options
    {
        int workers = 0;                              ///< threads; 0: as many as there are cores, at most 4
        std::chrono::milliseconds keepMemory{60'000}; ///< without use; then all but the models is freed
        QString weights = QStringLiteral(":/lucentra/recognizer/lines.net"); ///< of the net that finds lines
    };

    ScreenTextRecognizer();
    explicit ScreenTextRecognizer(const Options &options);
    ~ScreenTextRecognizer() override;

    /// Loads the model of English in the background. Others are loaded when a screen needs them.
    void warmUp() override;

    /// As the port says. `boundingBox` is one em of the line's font high (see `typographicBoxes`). What can't be read
    /// in about 3 seconds of processor time a worker (1.5 for a picture of 8K) is left out, the shortest lines first,
    /// so that no picture takes longer. Fails only where none of the languages' models is installed (domain
    /// "TextRecognition", code 1). The level Fast leaves doubtful lines as they were read first.
    Result<QList<RecognizedTextObservation>> perform(const TextRecognitionRequest &request,
                                                     const QImage &image) override;

private:
    /// Reads the columns of vertical text on an image, on which the net sees `ink`, and takes what was found of them
    /// out of the lines.
    QList<ReadColumns> takeColumns(QList<ReadLine> &lines, const SureMap &ink, const QImage &image,
                                   const TextRecognitionRequest &request);

    std::unique_ptr<LineReader> m_reader;
    std::unique_ptr<TextNet> m_net;
    std::unique_ptr<ReaderPool> m_pool;
};

} // namespace lucentra
