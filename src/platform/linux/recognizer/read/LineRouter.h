#pragma once

#include "find/FoundLine.h"
#include "read/PassReader.h"
#include "read/RoutedReading.h"
#include "read/ScreenLanguages.h"

namespace lucentra {

/// The share of other letters than Latin ones in what is seen, 0 to 1; 0 if nothing is.
double wideShare(const ScriptShares &seen);

/// Sends each line to the readers that its scripts call for: Latin letters to English, kana to Japanese, Hangul to
/// Korean, ideographs to the leading one of the languages that have them. Where its reading isn't sure, another is
/// asked as well, and the better reading stays. So most lines are read once.
class LineRouter
{
public:
    /// `languages` in the order of expectation, `extras` for what they can't read. With `mayRetry` doubtful lines are
    /// read again: the strip whole, with letters and surroundings told apart in other ways, by the extra languages.
    LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry);

    /// The best reading of a line by those who should know it. Any thread.
    RoutedReading read(const LineNormalizer &line, const ScriptShares &scripts, const PassReader &reader,
                       const ScreenLanguages &screen) const;

    /// Whether the line is worth the further trouble of `readOn`.
    bool isDoubtful(const RoutedReading &routed) const;

    /// Once the lines have been read: goes on with a doubtful one. Everybody is asked, also the extra languages, and
    /// letters and surroundings are told apart in the other ways. Any thread.
    RoutedReading readOn(const RoutedReading &earlier, const LineNormalizer &line, const ScriptShares &scripts,
                         const PassReader &reader, const ScreenLanguages &screen) const;

    /// Whether both traditional and simplified Chinese can be read.
    bool readsBothChinese() const;

    /// Once the whole screen has been read: a line whose Chinese is of the other kind than the screen's is read again
    /// as the screen's; any other stays as it is.
    Reading readAlike(const LineNormalizer &line, const RoutedReading &earlier, const PassReader &reader,
                      const ScreenLanguages &screen) const;

private:
    class Attempts;

    bool readSquare(Attempts &attempts, ReadingLanguage leading) const;
    bool reads(ReadingLanguage language) const;
    ReadingLanguage leadingOf(const ScreenLanguages &screen) const;
    QList<ReadingLanguage> readersFor(const ScriptShares &scripts, const ScreenLanguages &screen) const;

    QList<ReadingLanguage> m_languages;
    QList<ReadingLanguage> m_extras;
    bool m_mayRetry;
};

} // namespace lucentra
