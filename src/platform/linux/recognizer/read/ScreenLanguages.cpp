#include "read/ScreenLanguages.h"

#include "find/TextMaps.h"
#include "read/Writing.h"

#include <algorithm>
#include <cmath>

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

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &expected) const
{
    return *std::ranges::max_element(expected, {}, [this](ReadingLanguage language) {
        return characters(language) + (language == ReadingLanguage::Japanese ? m_expectedJapanese : 0);
    });
}

bool ScreenLanguages::isSimplifiedOpen() const
{
    constexpr double sure = 12;
    return std::abs(m_simplified) < sure;
}

bool ScreenLanguages::isSimplified() const
{
    // Traditional Chinese is expected first. Of 1,184 lines of it 3 say more, of 63 screens none.
    constexpr double enough = 2.5;
    if (m_simplified != 0)
        return m_simplified > enough;
    return characters(ReadingLanguage::SimplifiedChinese) > characters(ReadingLanguage::TraditionalChinese);
}

} // namespace lucentra
