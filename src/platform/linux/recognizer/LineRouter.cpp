#include "LineRouter.h"

#include <algorithm>

namespace lucentra {
namespace {

// Confidences of a reading, 0 to 100.
constexpr double certain = 88;  // no other language would do better
constexpr double good = 80;     // nor is another reading worth its time
constexpr double doubtful = 70; // other languages are asked as well
constexpr double misfit = 0.6;  // of the confidence is left where the letters don't fit into the line
constexpr double hopeless = 40; // of a picture's edges: not even another language is tried

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

bool has(const QList<ReadingLanguage> &languages, ReadingLanguage language)
{
    return languages.contains(language);
}

/// The writing of a text, as far as it decides who reads it.
enum class Writing { None, Digits, Latin, Kana, Han, Hangul };

Writing writingOf(const QString &text)
{
    const Scripts scripts = scriptsOf(text);
    if (scripts.all() == 0)
        return Writing::None;
    if (scripts.hangul > 0)
        return Writing::Hangul;
    const int wide = scripts.kana + scripts.han;
    if (20 * scripts.kana >= 3 * wide && scripts.kana > 0)
        return Writing::Kana;
    if (scripts.han > 0)
        return Writing::Han;
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }) ? Writing::Latin
                                                                                       : Writing::Digits;
}

/// The readers for a writing, the best first.
QList<ReadingLanguage> readersOf(Writing writing)
{
    switch (writing) {
    case Writing::Latin:
    case Writing::Digits:
        return {ReadingLanguage::English};
    case Writing::Kana:
        return {ReadingLanguage::Japanese};
    case Writing::Han:
        return {ReadingLanguage::TraditionalChinese, ReadingLanguage::Japanese};
    case Writing::Hangul:
        return {ReadingLanguage::Korean};
    case Writing::None:
        break;
    }
    return {ReadingLanguage::English, ReadingLanguage::TraditionalChinese, ReadingLanguage::Japanese};
}

/// Whether as many letters fit into the line: a Latin one is about half as wide as the line is high, an ideograph as
/// wide. What a reader makes of a writing that it doesn't know has too few letters or too many.
bool fits(const QString &text, const QSize &ink)
{
    const Scripts scripts = scriptsOf(text);
    const int wide = scripts.kana + scripts.han + scripts.hangul;
    const double width = ink.width() / double(ink.height());
    if (scripts.all() < 2)
        return true;
    const double least = 0.55 * wide + 0.22 * scripts.latin;
    const double most = 1.7 * wide + 1.0 * scripts.latin + 0.8 * double(text.size() - wide - scripts.latin);
    return width >= least && width <= most;
}

/// One line under the router's hands: who has read it, and the best that came out.
class Attempts
{
public:
    Attempts(const LineNormalizer &line, Separation separation, LineReader &reader)
        : m_line(line)
        , m_separation(separation)
        , m_reader(reader)
    {
    }

    /// Reads once more; what is not better by `handicap` is forgotten.
    void read(ReadingLanguage language, ReadingMode mode = ReadingMode::Line, double handicap = 0)
    {
        StripShape shape;
        shape.height = LineReader::stripHeight(language);
        Reading reading = m_reader.read(m_line.strip(m_separation, shape), language, mode);
        if (!fits(reading.text, m_line.inkSize()))
            reading.confidence *= misfit;
        if (mode == ReadingMode::Line)
            m_asked.append(language);
        if (reading.confidence > m_best.confidence + handicap) {
            m_best = reading;
            m_language = language;
        }
    }

    bool hasAsked(ReadingLanguage language) const { return m_asked.contains(language); }
    const Reading &best() const { return m_best; }
    ReadingLanguage language() const { return m_language; }
    Writing writing() const { return writingOf(m_best.text); }

private:
    const LineNormalizer &m_line;
    Separation m_separation;
    LineReader &m_reader;
    QList<ReadingLanguage> m_asked;
    Reading m_best;
    ReadingLanguage m_language = ReadingLanguage::English;
};

/// Whether the one who read it is the best reader of what came out.
bool isAtHome(const Attempts &attempts, ReadingLanguage leading)
{
    const double confidence = attempts.best().confidence;
    const ReadingLanguage language = attempts.language();
    switch (attempts.writing()) {
    case Writing::None:
        return false;
    case Writing::Digits:
        return confidence >= (language == ReadingLanguage::English ? doubtful : certain);
    case Writing::Latin:
        return language == ReadingLanguage::English && confidence >= doubtful;
    case Writing::Kana:
        return language == ReadingLanguage::Japanese && confidence >= doubtful;
    case Writing::Han:
        return language == leading && confidence >= good;
    case Writing::Hangul:
        return true;
    }
    return true;
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

LineRouter::LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry)
    : m_languages(std::move(languages))
    , m_extras(std::move(extras))
    , m_mayRetry(mayRetry)
{
}

Reading LineRouter::read(const LineNormalizer &line, bool isShort, LineReader &reader, ScreenLanguages &screen) const
{
    QList<Separation> separations{Separation::Axis};
    if (line.isVaried())
        separations = {Separation::BrightFill, Separation::Axis, Separation::DarkFill};
    if (!m_mayRetry)
        separations.resize(1);
    Reading best;
    for (const Separation separation : separations) {
        const Reading reading = readSeparated(line, isShort, separation, reader, screen);
        if (reading.confidence > best.confidence)
            best = reading;
        if (best.confidence >= doubtful)
            break;
    }
    return best;
}

Reading LineRouter::readSeparated(const LineNormalizer &line, bool isShort, Separation separation, LineReader &reader,
                                  ScreenLanguages &screen) const
{
    const ReadingLanguage leading = screen.leading(m_languages + m_extras);
    Attempts attempts(line, separation, reader);
    attempts.read(leading);
    const auto ask = [&](const QList<ReadingLanguage> &languages, double handicap) {
        for (const ReadingLanguage language : languages) {
            if (!isAtHome(attempts, leading) && (has(m_languages, language) || has(m_extras, language)) &&
                !attempts.hasAsked(language))
                attempts.read(language, ReadingMode::Line, handicap);
        }
    };
    // English is the better reader of Latin letters even where it is the less confident one.
    ask(readersOf(attempts.writing()), attempts.writing() == Writing::Latin ? -12 : 0);
    if (attempts.best().confidence < hopeless && line.isVaried())
        return attempts.best();
    if (attempts.best().confidence < doubtful && !isShort) {
        ask(m_languages, 0);
        if (m_mayRetry && !line.isVaried())
            ask(m_extras, 3);
    }
    if (m_mayRetry && attempts.best().confidence < good)
        attempts.read(attempts.language(), ReadingMode::Whole);
    if (attempts.best().confidence >= good)
        screen.add(attempts.language(), int(attempts.best().text.size()));
    return attempts.best();
}

} // namespace lucentra
