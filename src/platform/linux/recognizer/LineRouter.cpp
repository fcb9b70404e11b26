#include "LineRouter.h"

#include <algorithm>

namespace lucentra {
namespace {

constexpr double sure = 86;     // of the leading language: nobody else is asked
constexpr double doubtful = 78; // another separation, another language is tried

/// How many letters of each kind a text has.
struct Scripts
{
    int latin = 0; // letters and digits
    int kana = 0;
    int han = 0;
    int hangul = 0;

    int all() const { return latin + kana + han + hangul; }
};

Scripts scriptsOf(const QString &text)
{
    Scripts scripts;
    for (const QChar c : text) {
        switch (c.script()) {
        case QChar::Script_Han:
            ++scripts.han;
            break;
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
            ++scripts.kana;
            break;
        case QChar::Script_Hangul:
            ++scripts.hangul;
            break;
        default:
            if (c.isLetterOrNumber())
                ++scripts.latin;
        }
    }
    return scripts;
}

/// Whether the writing is what the language's model is the best reader of.
bool suits(ReadingLanguage language, const QString &text)
{
    const Scripts scripts = scriptsOf(text);
    const int wide = scripts.kana + scripts.han + scripts.hangul;
    switch (language) {
    case ReadingLanguage::English:
        return wide == 0;
    case ReadingLanguage::Japanese:
        return 20 * scripts.kana >= 3 * wide && scripts.kana > 0;
    case ReadingLanguage::TraditionalChinese:
    case ReadingLanguage::SimplifiedChinese:
        return scripts.han > 0 && 20 * scripts.kana < 3 * wide;
    case ReadingLanguage::Korean:
        return scripts.hangul > 0;
    }
    return false;
}

StripShape shapeFor(ReadingLanguage language)
{
    StripShape shape;
    shape.height = LineReader::stripHeight(language);
    return shape;
}

} // namespace

void ScreenLanguages::add(ReadingLanguage language, int characters)
{
    m_characters[std::size_t(language)].fetch_add(characters, std::memory_order_relaxed);
}

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &candidates) const
{
    return *std::max_element(candidates.begin(), candidates.end(), [this](ReadingLanguage a, ReadingLanguage b) {
        return m_characters[std::size_t(a)].load(std::memory_order_relaxed) <
               m_characters[std::size_t(b)].load(std::memory_order_relaxed);
    });
}

LineRouter::LineRouter(QList<ReadingLanguage> languages, bool mayRetry)
    : m_languages(std::move(languages))
    , m_mayRetry(mayRetry)
{
}

Reading LineRouter::readSeparated(const LineNormalizer &line, Separation separation, LineReader &reader,
                                  ScreenLanguages &screen) const
{
    QList<ReadingLanguage> order = m_languages;
    const ReadingLanguage leading = screen.leading(m_languages);
    order.removeOne(leading);
    order.prepend(leading);
    Reading best;
    ReadingLanguage bestLanguage = leading;
    double bestScore = -1;
    while (!order.isEmpty()) {
        const ReadingLanguage language = order.takeFirst();
        const Reading reading = reader.read(line.strip(separation, shapeFor(language)), language);
        const bool isSuited = suits(language, reading.text);
        const double score = reading.confidence * (isSuited ? 1 : 0.8);
        if (score > bestScore) {
            best = reading;
            bestLanguage = language;
            bestScore = score;
        }
        if (isSuited && reading.confidence >= sure)
            break;
        const auto next =
            std::find_if(order.begin(), order.end(), [&](ReadingLanguage other) { return suits(other, reading.text); });
        if (next != order.end())
            std::rotate(order.begin(), next, next + 1);
    }
    if (bestScore >= doubtful)
        screen.add(bestLanguage, int(best.text.size()));
    return best;
}

Reading LineRouter::read(const LineNormalizer &line, LineReader &reader, ScreenLanguages &screen) const
{
    Reading best;
    QList<Separation> separations{Separation::Axis};
    if (line.isVaried() && m_mayRetry)
        separations = {Separation::BrightFill, Separation::Axis, Separation::DarkFill};
    for (const Separation separation : separations) {
        const Reading reading = readSeparated(line, separation, reader, screen);
        if (reading.confidence > best.confidence)
            best = reading;
        if (best.confidence >= doubtful)
            break;
    }
    return best;
}

} // namespace lucentra
