#pragma once

#include "find/FoundLine.h"
#include "read/RoutedReading.h"

#include <QSet>

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
    void learn(const Comparison &comparison);

    /// The one of `expected` that has most of the characters so far; the first if nothing is known.
    ReadingLanguage leading(const QList<ReadingLanguage> &expected) const;

    /// Whether the net sees kana on the screen, as it does on each Japanese one.
    bool hasKana() const { return m_hasKana; }

    /// Whether the Chinese is simplified rather than traditional.
    bool isSimplified() const;

    /// Whether the lines so far are neither clearly traditional nor clearly simplified.
    bool isSimplifiedOpen() const;

private:
    int characters(ReadingLanguage language) const { return m_characters[std::size_t(language)]; }

    std::array<int, 5> m_characters{};
    QSet<QString> m_compared;
    double m_evidence = 0; // for simplified Chinese; below 0 for traditional
    bool m_hasKana = false;
    int m_expectedJapanese = 0; // characters, by the kana
};

} // namespace lucentra
