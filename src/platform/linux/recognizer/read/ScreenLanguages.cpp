#include "read/ScreenLanguages.h"

#include "find/TextMaps.h"
#include "read/Writing.h"

#include <algorithm>

namespace lucentra {

namespace {

constexpr double sure = 80; // confidence, 0 to 100; what is read with less says little about the language

} // namespace

void ScreenLanguages::expect(const ScriptShares &shares)
{
    constexpr int weight = 20;        // characters; what is read soon counts for more
    constexpr double mistaken = 0.05; // of the ideographs and kana, which the net confuses now and then
    // A third and more of a Japanese text is kana.
    if (3 * shares[TextMaps::Kana] > shares[TextMaps::Ideographs])
        m_expectedJapanese = weight;
    m_hasKana = shares[TextMaps::Kana] > mistaken * (shares[TextMaps::Kana] + shares[TextMaps::Ideographs]);
}

void ScreenLanguages::learn(const RoutedReading &reading)
{
    const Reading &best = reading.best;
    const Writing writing = writingOf(best.text);
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

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &expected) const
{
    return *std::ranges::max_element(expected, {}, [this](ReadingLanguage language) {
        return characters(language) + (language == ReadingLanguage::Japanese ? m_expectedJapanese : 0);
    });
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
