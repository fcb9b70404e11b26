#pragma once

#include "LineLooks.h"
#include "LineReader.h"

#include <QList>

#include <array>

namespace lucentra {

/// The best reading of a line, and which further languages were tried for it in vain.
struct RoutedReading
{
    Reading best;
    QList<ReadingLanguage> denied;
    double simplifiedLead = 0; ///< of simplified Chinese over traditional, in confidence times characters
    int compared = 0;          ///< characters
};

/// Which languages the lines of one screen are in, as far as they have been read. What is asked of it while lines are
/// being read may come from any thread; it learns only in between, so that it never matters which line was first.
class ScreenLanguages
{
public:
    /// Before anything has been read: how much of the screen looks like kana and like ideographs, in characters.
    void expect(int kana, int ideographs);

    void learn(const RoutedReading &reading);

    /// The one of `expected` that has most of the characters so far (the first where nothing is known yet), or one of
    /// `extras` that has far more.
    ReadingLanguage leading(const QList<ReadingLanguage> &expected, const QList<ReadingLanguage> &extras) const;

    /// Whether the Chinese is simplified rather than traditional.
    bool isSimplified() const;

    /// Whether the lines so far aren't clearly traditional.
    bool isSimplifiedOpen() const { return m_compared == 0 || m_simplifiedLead > -6 * m_compared; }

    /// Whether anything looks like kana or ideographs.
    bool isWide() const { return m_isWide; }

    /// Whether the screen may still be in a language that nobody expects.
    bool isOpen(ReadingLanguage extra) const;

private:
    int characters(ReadingLanguage language) const { return m_characters[std::size_t(language)]; }

    std::array<int, 5> m_characters{};
    std::array<int, 5> m_denials{}; // lines that are in another language for sure
    double m_simplifiedLead = 0;
    int m_compared = 0;
    bool m_isWide = false;
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
    RoutedReading read(const LineNormalizer &line, LineLooks looks, bool isShort, LineReader &reader,
                       const ScreenLanguages &screen) const;

    /// Once the whole screen has been read: a line whose Chinese is of the other kind than the screen's is read again
    /// as the screen's; any other stays as it is.
    Reading readAlike(const LineNormalizer &line, const Reading &earlier, LineReader &reader,
                      const ScreenLanguages &screen) const;

private:
    class Attempts;

    void readSeparated(Attempts &attempts, ReadingLanguage first, bool isShort, const ScreenLanguages &screen,
                       RoutedReading &routed) const;
    void readOtherwise(Attempts &attempts, ReadingLanguage first, bool isKnown) const;
    void askReaders(Attempts &attempts, const QList<ReadingLanguage> &languages, double handicap) const;
    void askExtras(Attempts &attempts, const ScreenLanguages &screen) const;
    void askSimplified(Attempts &attempts, const ScreenLanguages &screen, RoutedReading &routed) const;
    bool reads(ReadingLanguage language) const;
    ReadingLanguage firstReader(LineLooks looks, const ScreenLanguages &screen) const;

    QList<ReadingLanguage> m_languages;
    QList<ReadingLanguage> m_extras;
    bool m_mayRetry;
};

} // namespace lucentra
