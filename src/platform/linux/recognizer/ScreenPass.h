#pragma once

#include "LineFinder.h"
#include "LineLooks.h"
#include "LineRouter.h"
#include "PassReader.h"
#include "ReadingBudget.h"

#include <QImage>

#include <functional>
#include <vector>

namespace lucentra {

class ReaderPool;

/// A line, and what became of it.
struct ReadLine
{
    FoundLine found;
    QList<LineLooks> looks;      ///< one for each of the line's pieces
    QList<RoutedReading> pieces; ///< likewise
    Comparison comparison;       ///< of the two ways to write Chinese
    bool isOnPicture = false;
};

/// Reads the lines of one image with all workers.
///
/// Two lines that tell the screen's language soon come first, then all others. Those that made little sense are read
/// on, and traditional Chinese is compared with simplified, until the screen's is known; at the end all of it is read
/// alike. What is learned of the screen is learned between these steps, on the calling thread.
class ScreenPass
{
public:
    /// `lines` come with what was found, the longest first; all that is given must outlive the pass. `hasty` is the
    /// router where time runs short. Lines that nobody has time for, or that aren't wanted any more once `isWanted` (if
    /// any; called on the workers) says no, stay unread.
    ScreenPass(const QImage &image, QList<ReadLine> &lines, const LineRouter &thorough, const LineRouter &hasty,
               LineReader &reader, ReaderPool &pool, const std::function<bool()> &isWanted);

    /// Returns when all is read.
    void run();
    /// Whether there was no time for some of the lines.
    bool hasLeftOutLines() const;

private:
    using Lines = std::vector<ReadLine *>;

    void withEach(const Lines &lines, const std::function<void(ReadLine &)> &work);
    void expectLanguages();
    Lines samples() const;
    Lines doubtfulOf(const Lines &lines) const;
    Lines tellingOf(const Lines &lines) const;
    void askFurther(Lines doubtful, Lines telling);
    bool isDoubtful(const ReadLine &line) const;

    void lookAt(ReadLine &line) const;
    void read(ReadLine &line) const;
    void readOn(ReadLine &line) const;
    void compare(ReadLine &line) const;
    void readAlike(ReadLine &line) const;
    void learn(const ReadLine &line);

    const QImage &m_image;
    Lines m_lines;
    const LineRouter &m_thorough;
    const LineRouter &m_hasty;
    const PassReader m_reader;
    ReaderPool &m_pool;
    ReadingBudget m_budget;
    ScreenLanguages m_screen;
};

} // namespace lucentra
