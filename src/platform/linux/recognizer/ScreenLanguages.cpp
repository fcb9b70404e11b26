#include "ScreenLanguages.h"

#include "Writing.h"

#include <algorithm>

namespace lucentra {

namespace {

constexpr double sure = 80; // confidence, 0 to 100; what is read with less says little about the language

} // namespace

void ScreenLanguages::expect(int latin, int kana, int ideographs)
{
    m_isWide = kana + ideographs > 0;
    m_hasMuchWide = 3 * (kana + ideographs) > latin;
    constexpr int weight = 20; // characters; what is read soon counts for more
    // Of a Japanese text a third and more has kana; of a Chinese one the odd line looks as light.
    if (3 * kana > ideographs)
        m_expectedJapanese = std::min(weight, kana);
}

void ScreenLanguages::learn(const RoutedReading &reading)
{
    const Reading &best = reading.best;
    const Writing writing = writingOf(best.text);
    for (std::size_t i = 0; i < m_denials.size(); ++i) {
        const auto language = ReadingLanguage(i);
        const bool wasAsked = std::ranges::any_of(
            reading.attempts, [language](const Attempt &attempt) { return attempt.language == language; });
        m_denials[i] += wasAsked && best.language != language ? 1 : 0;
    }
    m_isKnown = true;
    // Latin letters and digits are on every screen.
    if (best.confidence >= sure && writing != Writing::Digits) {
        const ReadingLanguage language = writing == Writing::Latin ? ReadingLanguage::English : best.language;
        m_characters[std::size_t(language)] += int(best.text.size());
    }
}

void ScreenLanguages::learn(const Comparison &comparison)
{
    m_simplifiedLead += comparison.lead;
    m_compared += comparison.characters;
}

bool ScreenLanguages::isOpen(ReadingLanguage extra) const
{
    return m_denials[std::size_t(extra)] < 2 || characters(extra) > 0;
}

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &expected,
                                         const QList<ReadingLanguage> &extras) const
{
    constexpr int enough = 12; // characters; a screen in a language that nobody expects must prove it
    const auto weight = [this](ReadingLanguage language) {
        const int looks = m_isKnown ? m_expectedJapanese / 5 : m_expectedJapanese;
        return characters(language) + (language == ReadingLanguage::Japanese ? looks : 0);
    };
    ReadingLanguage leading = *std::ranges::max_element(expected, {}, weight);
    for (const ReadingLanguage extra : extras) {
        if (extra != ReadingLanguage::SimplifiedChinese && characters(extra) >= enough &&
            characters(extra) > 2 * characters(leading))
            leading = extra;
    }
    return leading;
}

bool ScreenLanguages::isSimplifiedOpen() const
{
    constexpr int enough = 24; // characters
    const bool isSimplifiedForSure = m_compared >= enough && m_simplifiedLead > 2 * m_compared;
    return m_compared == 0 || (m_simplifiedLead > -6 * m_compared && !isSimplifiedForSure);
}

bool ScreenLanguages::isSimplified() const
{
    // Of most traditional lines the other model is less sure by far, of simplified ones it is as sure or surer.
    constexpr double doubt = 1;
    constexpr int enough = 16; // characters
    if (m_compared > 0)
        return m_compared >= enough && m_simplifiedLead > -doubt * m_compared;
    return characters(ReadingLanguage::SimplifiedChinese) > characters(ReadingLanguage::TraditionalChinese);
}

} // namespace lucentra
