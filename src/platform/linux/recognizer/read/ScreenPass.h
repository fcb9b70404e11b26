#pragma once

#include "find/FoundLine.h"
#include "find/TextMaps.h"
#include "read/LineRouter.h"
#include "read/PassReader.h"
#include "read/ReadingBudget.h"

#include <QImage>

#include <functional>
#include <vector>

namespace lucentra {

class ReaderPool;
struct TextRecognitionRequest;

/// A line, and what became of it.
struct ReadLine
{
    FoundLine found;
    QList<RoutedReading> pieces; ///< one for each of the line's pieces
    double simplified = 0;       ///< what it says for simplified Chinese
};

/// The part of an image that a line's strip is cut from, without what is of the `lines` above and below it (itself may
/// be among them). Pixels of the image, as its `ink`.
QRect roomOf(const QRect &ink, const QList<QRect> &lines, const QSize &image);

/// Reads the lines of one image with all workers.
///
/// It first decides whether the Chinese is traditional or simplified. Lines that made little sense are read on; at the
/// end all Chinese is read alike. What is learned of the screen is learned between these steps, on the calling thread.
class ScreenPass
{
public:
    /// `ink` is what the net sees of the letters. `lines` come with what was found, the longest first; all that is
    /// given must outlive the pass. `hasty` is the router where time runs short. Lines that nobody has time for, or
    /// that aren't wanted any more, stay unread.
    ScreenPass(const QImage &image, const SureMap &ink, QList<ReadLine> &lines, const LineRouter &thorough,
               const LineRouter &hasty, LineReader &reader, ReaderPool &pool, const TextRecognitionRequest &request);

    /// Takes into account what is known of the image's Chinese before it is read.
    void learnSimplified(double evidence) { m_screen.learnSimplified(evidence); }
    /// Returns when all is read.
    void run();
    /// Whether there was no time for some of the lines.
    bool hasLeftOutLines() const;

private:
    using Lines = std::vector<ReadLine *>;

    void withEach(const Lines &lines, const std::function<void(ReadLine &)> &work);
    void expectLanguages();
    Lines doubtfulLines() const;
    Lines tellingLines() const;
    void tellChinese();
    bool isDoubtful(const ReadLine &line) const;

    static double sureness(const QList<LinePiece> &pieces, const QList<RoutedReading> &readings);
    void read(ReadLine &line) const;
    int lightestColumn(const QRect &ink, int first, int end) const;
    void dropIcon(ReadLine &line) const;
    void readKey(ReadLine &line) const;
    void readStretches(ReadLine &line) const;
    void readOn(ReadLine &line) const;
    void compareChinese(ReadLine &line) const;
    void readAlike(ReadLine &line) const;
    void learn(const ReadLine &line);

    LineNormalizer normalized(const QRect &ink) const;

    const QImage &m_image;
    const SureMap &m_ink;
    Lines m_lines;
    QList<QRect> m_places; ///< of the lines
    const LineRouter &m_thorough;
    const LineRouter &m_hasty;
    const PassReader m_reader;
    ReaderPool &m_pool;
    ReadingBudget m_budget;
    mutable ReadingBudget m_doubts; ///< of second readings
    ScreenLanguages m_screen;
};

} // namespace lucentra
