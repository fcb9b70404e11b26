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
    m_isMostlyWide = 3 * (kana + ideographs) > latin;
    constexpr int weight = 20; // characters; what is read soon counts for more
    // Of a Japanese text a third and more has kana; of a Chinese one the odd line looks as light.
    if (3 * kana > ideographs)
        m_expectedJapanese = std::min(weight, kana);
}

void ScreenLanguages::learn(const RoutedReading &reading)
{
    const Reading &best = reading.best;
    const Writing writing = writingOf(best.text);
    for (const ReadingLanguage language : reading.asked) {
        if (language != best.language)
            ++m_denials[std::size_t(language)];
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
    m_simplifiedLead += comparison.simplifiedLead;
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
