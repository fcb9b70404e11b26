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
    for (const auto &[characters, evidence] : comparison.evidence.asKeyValueRange()) {
        // Each once: what is repeated, such as a name in a list, proves no more.
        if (!m_compared.contains(characters))
            m_evidence += evidence;
        if (!characters.isEmpty())
            m_compared.insert(characters);
    }
}

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &expected) const
{
    return *std::ranges::max_element(expected, {}, [this](ReadingLanguage language) {
        return characters(language) + (language == ReadingLanguage::Japanese ? m_expectedJapanese : 0);
    });
}

bool ScreenLanguages::isSimplifiedOpen() const
{
    constexpr double enough = 70;              // of some ten characters that are seen differently
    constexpr double enoughOfTraditional = 40; // which was asked for; two characters and more
    return m_evidence <= enough && m_evidence >= -enoughOfTraditional;
}

bool ScreenLanguages::isSimplified() const
{
    constexpr double enough = 20; // of 83 screens with three such characters this sets all apart
    if (m_evidence != 0)
        return m_evidence > enough;
    return characters(ReadingLanguage::SimplifiedChinese) > characters(ReadingLanguage::TraditionalChinese);
}

} // namespace lucentra
