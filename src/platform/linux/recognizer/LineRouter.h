#pragma once

#include "LineLooks.h"
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

    /// The one of `expected` that has most of the characters so far (the first where nothing is known yet), or one of
    /// `extras` that has far more.
    ReadingLanguage leading(const QList<ReadingLanguage> &expected, const QList<ReadingLanguage> &extras) const;

    /// Whether more of the Chinese is simplified than traditional.
    bool isSimplified() const;

    /// Before anything has been read: how much of the screen looks like kana and like ideographs, in characters.
    void expect(int kana, int ideographs);

    /// Whether anything looks like kana or ideographs.
    bool isWide() const { return m_isWide; }

    /// Whether it is still open if the screen's Chinese is the simplified one; `settle` counts the lines that said no.
    bool isSimplifiedOpen() const { return m_traditionalLines.load(std::memory_order_relaxed) < 2; }
    void settleTraditional() { m_traditionalLines.fetch_add(1, std::memory_order_relaxed); }

private:
    std::array<std::atomic<int>, 5> m_characters{};
    std::atomic<int> m_traditionalLines = 0;
    std::atomic<bool> m_isWide = false;
};

/// Sends each line to the readers that its writing calls for.
///
/// By its looks a line goes to English first, to Japanese, or to the leading one of the languages with ideographs. What
/// comes out tells who the right reader is: Latin letters go to English, kana to Japanese, ideographs alone to Chinese
/// and, where they are doubtful, to Japanese as well. So most lines are read once.
class LineRouter
{
public:
    /// `languages` in the order of expectation, `extras` for what they can't read. With `mayRetry` doubtful lines are
    /// read again: the strip whole, with letters and surroundings told apart in other ways, by the extra languages.
    LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry);

    /// The best reading of a line. `isShort` says that it is a letter or two at most, perhaps an icon: not worth the
    /// extra languages. Any thread.
    Reading read(const LineNormalizer &line, LineLooks looks, bool isShort, LineReader &reader,
                 ScreenLanguages &screen) const;

    /// Once the whole screen has been read: a line whose Chinese is of the other kind than the screen's is read again
    /// as the screen's; any other stays as it is.
    Reading readAlike(const LineNormalizer &line, const Reading &earlier, LineReader &reader,
                      const ScreenLanguages &screen) const;

private:
    class Attempts;

    void readSeparated(Attempts &attempts, ReadingLanguage first, bool isShort, ScreenLanguages &screen) const;
    void askReaders(Attempts &attempts, const QList<ReadingLanguage> &languages, double handicap) const;
    void askSimplified(Attempts &attempts, ScreenLanguages &screen) const;
    bool reads(ReadingLanguage language) const;
    ReadingLanguage firstReader(LineLooks looks, const ScreenLanguages &screen) const;

    QList<ReadingLanguage> m_languages;
    QList<ReadingLanguage> m_extras;
    bool m_mayRetry;
};

} // namespace lucentra
