#pragma once

#include "find/FoundLine.h"
#include "read/RoutedReading.h"

#include <array>

namespace lucentra {

/// Which languages the lines of one screen are in, as far as they have been read. What is asked of it while lines are
/// being read may come from any thread; it learns only in between, so that it never matters which line was first.
class ScreenLanguages
{
public:
    /// Before anything has been read: how much of each script the net sees on the screen.
    void expect(const ScriptShares &shares);

    /// Each line once.
    void learn(const RoutedReading &reading);
    /// How much there is for simplified Chinese rather than traditional; below 0 against it.
    void learnSimplified(double evidence) { m_simplified += evidence; }

    /// The one of `expected` that has most of the characters so far; the first if nothing is known.
    ReadingLanguage leading(const QList<ReadingLanguage> &expected) const;

    /// Whether the net sees kana on the screen, as it does on each Japanese one.
    bool hasKana() const { return m_hasKana; }

    /// Whether the Chinese is simplified rather than traditional.
    bool isSimplified() const;

    /// Whether that isn't sure yet.
    bool isSimplifiedOpen() const;

private:
    int characters(ReadingLanguage language) const { return m_characters[std::size_t(language)]; }

    std::array<int, 5> m_characters{};
    double m_simplified = 0; // logarithm of the odds
    bool m_hasKana = false;
    int m_expectedJapanese = 0; // characters, by the kana
};

} // namespace lucentra
