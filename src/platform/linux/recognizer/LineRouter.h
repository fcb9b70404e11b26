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
class LineRouter
{
public:
    /// `languages` in the order of expectation. Without `mayRetry` every line is read once by each language at most.
    LineRouter(QList<ReadingLanguage> languages, bool mayRetry);

    /// The best reading of a line.
    Reading read(const LineNormalizer &line, LineReader &reader, ScreenLanguages &screen) const;

private:
    struct Attempt;

    Reading readSeparated(const LineNormalizer &line, Separation separation, LineReader &reader,
                          ScreenLanguages &screen) const;

    QList<ReadingLanguage> m_languages;
    bool m_mayRetry;
};

} // namespace lucentra
