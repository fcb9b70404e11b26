#pragma once

#include "LineReader.h"

#include <QList>

#include <array>
#include <atomic>

namespace lucentra {

/// Which languages the lines of one screen turned out to be in. Any thread, several at once.
class ScreenLanguages
{
public:
    void add(ReadingLanguage language, int characters);

    /// The one of `candidates` that has most of the characters so far; the first where nothing is known yet.
    ReadingLanguage leading(const QList<ReadingLanguage> &candidates) const;

private:
    std::array<std::atomic<int>, 5> m_characters{};
};

/// Sends each line to the readers that its writing calls for.
///
/// The screen's leading language reads first. What comes out tells who the right reader is: Latin letters go to
/// English, kana to Japanese, ideographs alone to Chinese and, where they are doubtful, to Japanese as well. So most
/// lines are read once, some twice.
class LineRouter
{
public:
    /// `languages` in the order of expectation, `extras` for what they can't read. With `mayRetry` doubtful lines are
    /// read again: the strip whole, with letters and surroundings told apart in other ways, by the extra languages.
    LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry);

    /// The best reading of a line. Any thread; the reader is the thread's own.
    /// `isShort` says that it is
    /// a letter or two at most, perhaps an icon: not worth the extra languages.
    Reading read(const LineNormalizer &line, bool isShort, LineReader &reader, ScreenLanguages &screen) const;

private:
    Reading readSeparated(const LineNormalizer &line, bool isShort, Separation separation, LineReader &reader,
                          ScreenLanguages &screen) const;

    QList<ReadingLanguage> m_languages;
    QList<ReadingLanguage> m_extras;
    bool m_mayRetry;
};

} // namespace lucentra
