#pragma once

#include "RoutedReading.h"

#include <array>

namespace lucentra {

/// Which languages the lines of one screen are in, as far as they have been read. What is asked of it while lines are
/// being read may come from any thread; it learns only in between, so that it never matters which line was first.
class ScreenLanguages
{
public:
    /// Before anything has been read: how much of the screen looks like Latin letters, like kana and like ideographs,
    /// in heights of the line.
    void expect(int latin, int kana, int ideographs);

    /// Each line once.
    void learn(const RoutedReading &reading);
    void learn(const Comparison &comparison);

    /// The one of `expected` that has most of the characters so far (the first where nothing is known yet), or one of
    /// `extras` that has far more.
    ReadingLanguage leading(const QList<ReadingLanguage> &expected, const QList<ReadingLanguage> &extras) const;

    /// Whether the Chinese is simplified rather than traditional.
    bool isSimplified() const;

    /// Whether the lines so far are neither clearly traditional nor clearly simplified.
    bool isSimplifiedOpen() const;

    /// Whether any line has been read.
    bool isKnown() const { return m_isKnown; }

    /// Whether anything looks like kana or ideographs, and whether a quarter does.
    bool isWide() const { return m_isWide; }
    bool hasMuchWide() const { return m_hasMuchWide; }

    /// Whether the screen may still be in a language that nobody expects.
    bool isOpen(ReadingLanguage extra) const;

private:
    int characters(ReadingLanguage language) const { return m_characters[std::size_t(language)]; }

    std::array<int, 5> m_characters{};
    std::array<int, 5> m_denials{}; // lines that a language read in vain
    double m_simplifiedLead = 0;
    int m_compared = 0;
    int m_expectedJapanese = 0; // characters, by the looks; they count for less once anything has been read
    bool m_isKnown = false;
    bool m_isWide = false;
    bool m_hasMuchWide = false;
};

} // namespace lucentra
