#include "LineRouter.h"

#include <algorithm>
#include <map>

namespace lucentra {
namespace {

// Confidences of a reading, 0 to 100.
constexpr double certain = 88;      // no other language would do better
constexpr double good = 80;         // nor is another reading worth its time
constexpr double doubtful = 70;     // other languages are asked as well
constexpr double englishLead = 12;  // English reads Latin letters better than others that are as confident
constexpr double misfit = 0.45;     // of the confidence is left where the letters don't fit into the line
constexpr qsizetype wordLength = 8; // characters; a few ideographs may look like a word, but not like a sentence
constexpr double known = 60;        // the language is right, if not every letter
constexpr double unread = 62;       // and that of a writing which none of those asked knows isn't higher
constexpr double hopeless = 40;     // of a picture's edges: not even another language is tried

/// How many letters of each kind a text has.
struct Scripts
{
    int latin = 0; // letters and digits
    int kana = 0;
    int han = 0;
    int hangul = 0;

    int wide() const { return kana + han + hangul; }
    int all() const { return latin + wide(); }
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
    const int wide = scripts.wide();
    const double width = ink.width() / double(ink.height());
    if (scripts.all() < 2)
        return width <= (wide > 0 ? 1.5 : 1.2) * double(std::max<qsizetype>(1, text.size()));
    const double least = 0.55 * wide + 0.22 * scripts.latin;
    const double most = 1.7 * wide + 1.0 * scripts.latin + 0.8 * double(text.size() - wide - scripts.latin);
    return width >= least && width <= most;
}

/// Whether a text of ideographs and kana alone has one for each square of the line.
bool fillsSquares(const QString &text, const QSize &ink)
{
    const Scripts scripts = scriptsOf(text);
    const int wide = scripts.kana + scripts.han;
    if (wide < 2 || scripts.all() != wide)
        return false;
    return std::abs(ink.width() / double(ink.height()) - wide) <= 0.25 + 0.08 * wide;
}

/// Whether the one who read it is the best reader of what came out.
bool isAtHome(const Reading &reading, ReadingLanguage leading)
{
    const double confidence = reading.confidence;
    const QString &text = reading.text;
    const ReadingLanguage language = reading.language;
    switch (writingOf(text)) {
    case Writing::None:
        return false;
    case Writing::Digits:
        return confidence >= (language == ReadingLanguage::English ? doubtful : certain);
    case Writing::Latin:
        return language == ReadingLanguage::English && confidence >= (text.size() <= wordLength ? certain : doubtful);
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

/// One line under the router's hands: who has read it, and the best that came out.
class LineRouter::Attempts
{
public:
    Attempts(const LineNormalizer &line, Separation separation, LineReader &reader, ReadingLanguage leading)
        : m_line(line)
        , m_separation(separation)
        , m_reader(reader)
        , m_leading(leading)
    {
    }

    /// Reads once more; what is not better by `handicap` is forgotten. Returns how sure the reader was.
    double read(ReadingLanguage language, ReadingMode mode = ReadingMode::Line, double handicap = 0)
    {
        // What is read now and then needn't have an engine for each worker.
        const bool isUsual = language == m_leading || language == ReadingLanguage::English;
        Reading reading = m_reader.read(strip(language), language, mode, isUsual ? 64 : 1);
        if (!fits(reading.text, m_line.inkSize()))
            reading.confidence *= misfit;
        if (mode == ReadingMode::Line)
            m_asked.append(language);
        // Ideographs that fill their squares are hardly Latin letters by chance.
        if (writingOf(reading.text) == Writing::Latin && fillsSquares(m_best.text, m_line.inkSize()) &&
            reading.confidence < certain)
            return reading.confidence;
        const bool isEnglishAlready =
            m_best.language == ReadingLanguage::English && writingOf(m_best.text) == Writing::Latin;
        if (isEnglishAlready && writingOf(reading.text) == Writing::Latin && language != ReadingLanguage::English)
            handicap += englishLead;
        const bool areRatherSquares = writing() == Writing::Latin && m_best.confidence < certain &&
                                      reading.confidence >= hopeless && fillsSquares(reading.text, m_line.inkSize());
        // A word in other letters among Latin ones is what English is unsure of.
        const bool explainsWord =
            isDoubtfullyLatin() && reading.confidence >= doubtful && scriptsOf(reading.text).wide() >= 2;
        if (areRatherSquares || explainsWord || reading.confidence > m_best.confidence + handicap)
            m_best = reading;
        return reading.confidence;
    }

    bool isDoubtfullyLatin() const { return writing() == Writing::Latin && m_best.weakest < known; }
    bool hasAsked(ReadingLanguage language) const { return m_asked.contains(language); }
    const LineNormalizer &line() const { return m_line; }
    ReadingLanguage leading() const { return m_leading; }
    const Reading &best() const { return m_best; }
    ReadingLanguage language() const { return m_best.language; }
    Writing writing() const { return writingOf(m_best.text); }

private:
    const Strip &strip(ReadingLanguage language)
    {
        Strip &strip = m_strips[language];
        if (!strip)
            strip = m_line.strip(m_separation, LineReader::stripShape(language));
        return strip;
    }

    const LineNormalizer &m_line;
    Separation m_separation;
    LineReader &m_reader;
    ReadingLanguage m_leading;
    std::map<ReadingLanguage, Strip> m_strips;
    QList<ReadingLanguage> m_asked;
    Reading m_best;
};

void ScreenLanguages::expect(int kana, int ideographs)
{
    m_isWide = kana + ideographs > 0;
    constexpr int weight = 20; // characters; what is read soon counts for more
    // Of a Japanese text a third and more has kana; of a Chinese one the odd line looks as light.
    if (3 * kana > ideographs)
        m_characters[std::size_t(ReadingLanguage::Japanese)] += std::min(weight, kana);
}

void ScreenLanguages::learn(const RoutedReading &reading)
{
    const Reading &best = reading.best;
    const Writing writing = writingOf(best.text);
    for (const ReadingLanguage language : reading.denied)
        ++m_denials[std::size_t(language)];
    m_simplifiedLead += reading.simplifiedLead;
    m_compared += reading.compared;
    // Latin letters and digits are on every screen.
    if (best.confidence >= good && writing != Writing::Digits) {
        const ReadingLanguage language = writing == Writing::Latin ? ReadingLanguage::English : best.language;
        m_characters[std::size_t(language)] += int(best.text.size());
    }
}

bool ScreenLanguages::isOpen(ReadingLanguage extra) const
{
    return m_denials[std::size_t(extra)] < 2 || characters(extra) > 0;
}

ReadingLanguage ScreenLanguages::leading(const QList<ReadingLanguage> &expected,
                                         const QList<ReadingLanguage> &extras) const
{
    constexpr int enough = 12; // characters; a screen in a language that nobody expects must prove it
    ReadingLanguage leading =
        *std::max_element(expected.begin(), expected.end(),
                          [&](ReadingLanguage a, ReadingLanguage b) { return characters(a) < characters(b); });
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

LineRouter::LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry)
    : m_languages(std::move(languages))
    , m_extras(std::move(extras))
    , m_mayRetry(mayRetry)
{
}

bool LineRouter::reads(ReadingLanguage language) const
{
    return has(m_languages, language) || has(m_extras, language);
}

ReadingLanguage LineRouter::firstReader(LineLooks looks, const ScreenLanguages &screen) const
{
    QList<ReadingLanguage> others = m_languages;
    others.removeAll(ReadingLanguage::English);
    if (others.isEmpty() || (looks == LineLooks::Latin && has(m_languages, ReadingLanguage::English)))
        return ReadingLanguage::English;
    if (looks == LineLooks::Kana && has(m_languages, ReadingLanguage::Japanese))
        return ReadingLanguage::Japanese;
    return screen.leading(others, m_extras);
}

RoutedReading LineRouter::read(const LineNormalizer &line, LineLooks looks, bool isShort, LineReader &reader,
                               const ScreenLanguages &screen) const
{
    QList<Separation> separations{Separation::Axis, Separation::BrightFill};
    if (line.isVaried())
        separations = {Separation::BrightFill, Separation::Axis, Separation::DarkFill};
    if (!m_mayRetry || (isShort && !line.isVaried()))
        separations.resize(1);
    const ReadingLanguage first = isShort ? screen.leading(m_languages, m_extras) : firstReader(looks, screen);
    RoutedReading routed;
    Reading &best = routed.best;
    for (const Separation separation : separations) {
        Attempts attempts(line, separation, reader, firstReader(LineLooks::Ideographs, screen));
        if (separation == separations.first())
            readSeparated(attempts, first, isShort, screen, routed);
        else
            readOtherwise(attempts, best.confidence >= hopeless ? best.language : first, best.confidence >= known);
        for (const ReadingLanguage extra : m_extras) {
            if (attempts.hasAsked(extra) && attempts.language() != extra)
                routed.denied.append(extra);
        }
        if (attempts.best().confidence > best.confidence)
            best = attempts.best();
        if (best.confidence >= doubtful)
            break;
    }
    return routed;
}

Reading LineRouter::readAlike(const LineNormalizer &line, const Reading &earlier, LineReader &reader,
                              const ScreenLanguages &screen) const
{
    const ReadingLanguage wrong =
        screen.isSimplified() ? ReadingLanguage::TraditionalChinese : ReadingLanguage::SimplifiedChinese;
    const ReadingLanguage right =
        screen.isSimplified() ? ReadingLanguage::SimplifiedChinese : ReadingLanguage::TraditionalChinese;
    if (earlier.language != wrong || writingOf(earlier.text) != Writing::Han || !reads(right))
        return earlier;
    Attempts attempts(line, line.isVaried() ? Separation::BrightFill : Separation::Axis, reader, right);
    attempts.read(right);
    return writingOf(attempts.best().text) == Writing::Han ? attempts.best() : earlier;
}

void LineRouter::askReaders(Attempts &attempts, const QList<ReadingLanguage> &languages, double handicap) const
{
    for (const ReadingLanguage language : languages) {
        if (!isAtHome(attempts.best(), attempts.leading()) && reads(language) && !attempts.hasAsked(language))
            attempts.read(language, ReadingMode::Line, handicap);
    }
}

/// Traditional Chinese reads simplified characters as their counterparts, and is sure of them. So the first lines of
/// ideographs are read by both, and who was surer of them reads the others.
void LineRouter::askSimplified(Attempts &attempts, const ScreenLanguages &screen, RoutedReading &routed) const
{
    const Reading traditional = attempts.best();
    if (!m_mayRetry || traditional.language != ReadingLanguage::TraditionalChinese || traditional.confidence < good ||
        attempts.writing() != Writing::Han || !has(m_extras, ReadingLanguage::SimplifiedChinese) ||
        !screen.isSimplifiedOpen())
        return;
    const double simplified = attempts.read(ReadingLanguage::SimplifiedChinese, ReadingMode::Line, 3);
    const int characters = scriptsOf(traditional.text).han;
    routed.simplifiedLead = (simplified - traditional.confidence) * characters;
    routed.compared = characters;
}

/// What none of the expected languages can read may be in another.
void LineRouter::askExtras(Attempts &attempts, const ScreenLanguages &screen) const
{
    const QSize ink = attempts.line().inkSize();
    if (!m_mayRetry || ink.width() < 2 * ink.height())
        return;
    for (const ReadingLanguage extra : m_extras) {
        // Of Hangul the others make very little sense, of simplified ideographs more.
        const double least = extra == ReadingLanguage::Korean ? unread : doubtful;
        if (attempts.best().confidence < least && screen.isOpen(extra))
            askReaders(attempts, {extra}, 12);
    }
}

void LineRouter::readSeparated(Attempts &attempts, ReadingLanguage first, bool isShort, const ScreenLanguages &screen,
                               RoutedReading &routed) const
{
    attempts.read(first);
    askReaders(attempts, readersOf(attempts.writing()), attempts.writing() == Writing::Latin ? -englishLead : 0);
    askSimplified(attempts, screen, routed);
    if (attempts.best().confidence < hopeless && attempts.line().isVaried())
        return;
    const bool isLatin = attempts.writing() == Writing::Latin && attempts.language() == ReadingLanguage::English;
    const bool isSentence = isLatin && attempts.best().text.size() > wordLength;
    if (isLatin && attempts.best().confidence >= doubtful) {
        if (!isSentence)
            askReaders(attempts, {attempts.leading()}, 0);
        else if (attempts.isDoubtfullyLatin() && screen.isWide() && !attempts.hasAsked(attempts.leading()))
            attempts.read(attempts.leading(), ReadingMode::Line, 100);
    } else if (attempts.best().confidence < doubtful && !isShort) {
        askReaders(attempts, m_languages, 0);
        askExtras(attempts, screen);
    }
    if (m_mayRetry && attempts.best().confidence < good)
        attempts.read(attempts.language(), ReadingMode::Whole);
}

/// Once more, letters and surroundings told apart in another way. The colours may have been wrong, the language hardly
/// was where the letters made sense.
void LineRouter::readOtherwise(Attempts &attempts, ReadingLanguage first, bool isKnown) const
{
    attempts.read(first);
    if (!isKnown && attempts.best().confidence >= hopeless)
        askReaders(attempts, readersOf(attempts.writing()), attempts.writing() == Writing::Latin ? -englishLead : 0);
}

} // namespace lucentra
