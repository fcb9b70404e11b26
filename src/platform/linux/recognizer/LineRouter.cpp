#include "LineRouter.h"

#include "Writing.h"

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
constexpr qsizetype wordLength = 8; // letters; a few ideographs may look like a word, but not like a sentence
constexpr int sentenceWidth = 6;    // heights
constexpr double known = 60;        // the language is right, if not every letter
constexpr double unread = 62;       // and that of a writing which none of those asked knows isn't higher
constexpr double hopeless = 40;     // of a picture's edges, or of letters that weren't told apart from it

bool has(const QList<ReadingLanguage> &languages, ReadingLanguage language)
{
    return languages.contains(language);
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
    // A 7 isn't 了.
    if (scripts.all() == 1 && scripts.han == 1 && text.size() == 1 && width < 0.76)
        return false;
    if (scripts.all() < 2)
        return width <= (wide > 0 ? 1.5 : 1.2) * double(std::max<qsizetype>(1, text.size()));
    const double least = 0.55 * wide + 0.22 * scripts.latin;
    const double most = 1.7 * wide + 1.0 * scripts.latin + 0.8 * double(text.size() - wide - scripts.latin);
    return width >= least && width <= most;
}

/// Whether a figure is as wide as a lone ideograph or kana.
bool isSquare(const QSize &ink)
{
    return ink.height() >= 8 && 20 * ink.width() >= 13 * ink.height() && 10 * ink.width() <= 15 * ink.height();
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

/// How many letters a text has; ideographs beside a number may look like one or two.
qsizetype lettersIn(const QString &text)
{
    return std::ranges::count_if(text, [](QChar character) { return character.isLetter(); });
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
        return language == ReadingLanguage::English &&
               confidence >= (lettersIn(text) <= wordLength ? certain : doubtful);
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
    /// Goes on from what has been read.
    Attempts(const LineNormalizer &line, RoutedReading routed, const PassReader &reader, ReadingLanguage leading)
        : m_line(line)
        , m_reader(reader)
        , m_leading(leading)
        , m_routed(std::move(routed))
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
        m_routed.attempts.append({language, m_routed.separation, mode});
        // Ideographs that fill their squares are hardly Latin letters by chance.
        if (writingOf(reading.text) == Writing::Latin && fillsSquares(best().text, m_line.inkSize()) &&
            reading.confidence < certain)
            return reading.confidence;
        const bool isEnglishAlready =
            best().language == ReadingLanguage::English && writingOf(best().text) == Writing::Latin;
        if (isEnglishAlready && writingOf(reading.text) == Writing::Latin && language != ReadingLanguage::English)
            handicap += englishLead;
        const bool areRatherSquares = writing() == Writing::Latin && best().confidence < certain &&
                                      reading.confidence >= hopeless && fillsSquares(reading.text, m_line.inkSize());
        // A word in other letters among Latin ones is what English is unsure of, or takes for a few letters.
        const bool explainsWord = (isDoubtfullyLatin() || isFewLetters()) && reading.confidence >= doubtful &&
                                  scriptsOf(reading.text).wide() >= 2;
        if (areRatherSquares || explainsWord || reading.confidence > best().confidence + handicap)
            m_routed.best = reading;
        return reading.confidence;
    }

    /// Reads without comparing; where the engine sees nothing, the strip as it is.
    Reading readAlone(ReadingLanguage language)
    {
        Reading reading;
        for (const ReadingMode mode : {ReadingMode::Line, ReadingMode::Whole}) {
            if (reading.confidence < hopeless)
                reading = m_reader.read(strip(language), language, mode);
        }
        m_routed.attempts.append({language, m_routed.separation, ReadingMode::Line});
        return reading;
    }
    void take(const Reading &reading) { m_routed.best = reading; }

    bool isDoubtfullyLatin() const { return writing() == Writing::Latin && best().weakest < known; }
    /// A number with what may be its unit or a word that looks like one.
    bool isFewLetters() const
    {
        constexpr qsizetype few = 3;
        const bool hasDigit = std::ranges::any_of(best().text, [](QChar character) { return character.isDigit(); });
        return writing() == Writing::Latin && hasDigit && lettersIn(best().text) <= few && best().confidence < certain;
    }
    bool hasAsked(ReadingLanguage language, ReadingMode mode = ReadingMode::Line) const
    {
        return m_routed.attempts.contains(Attempt{language, m_routed.separation, mode});
    }
    const LineNormalizer &line() const { return m_line; }
    ReadingLanguage leading() const { return m_leading; }
    const Reading &best() const { return m_routed.best; }
    const RoutedReading &routed() const { return m_routed; }
    ReadingLanguage language() const { return best().language; }
    Writing writing() const { return writingOf(best().text); }

private:
    const Strip &strip(ReadingLanguage language)
    {
        Strip &strip = m_strips[language];
        if (!strip)
            strip = m_line.strip(m_routed.separation, LineReader::stripShape(language));
        return strip;
    }

    const LineNormalizer &m_line;
    const PassReader &m_reader;
    ReadingLanguage m_leading;
    std::map<ReadingLanguage, Strip> m_strips;
    RoutedReading m_routed;
};

namespace {

/// Nothing read yet of a line whose letters and surroundings are told apart so; what was tried otherwise is remembered.
RoutedReading toldApart(const RoutedReading &routed, Separation separation)
{
    return {{}, separation, routed.attempts};
}

/// `others` go on from `routed`.
void takeBetter(RoutedReading &routed, const RoutedReading &others)
{
    if (others.best.confidence > routed.best.confidence)
        routed = others;
    else
        routed.attempts = others.attempts;
}

} // namespace

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
    const ReadingLanguage leading = screen.leading(others, m_extras);
    const bool isExpected = has(m_languages, leading);
    return looks == LineLooks::Kana && isExpected && has(m_languages, ReadingLanguage::Japanese)
               ? ReadingLanguage::Japanese
               : leading;
}

RoutedReading LineRouter::read(const LineNormalizer &line, LineLooks looks, bool isShort, const PassReader &reader,
                               const ScreenLanguages &screen) const
{
    const ReadingLanguage leading = firstReader(LineLooks::Ideographs, screen);
    const bool isEnglishFirst = isShort && !screen.hasMuchWide() && has(m_languages, ReadingLanguage::English);
    const ReadingLanguage first = isEnglishFirst ? ReadingLanguage::English
                                  : isShort      ? screen.leading(m_languages, m_extras)
                                                 : firstReader(looks, screen);
    const QList<Separation> separations = separationsOf(line, isShort);
    RoutedReading routed;
    routed.separation = separations.first();
    if (isShort && m_mayRetry && isSquare(line.inkSize())) {
        Attempts attempts(line, routed, reader, leading);
        if (readSquare(attempts))
            return attempts.routed();
        routed.attempts = attempts.routed().attempts;
    }
    for (const Separation separation : separations) {
        Attempts attempts(line, toldApart(routed, separation), reader, leading);
        readFirst(attempts, first, isShort, screen);
        takeBetter(routed, attempts.routed());
        if (routed.best.confidence >= hopeless)
            break;
    }
    if (routed.best.confidence < hopeless && !line.isVaried())
        routed.separation = separations.first(); // others may make more of it as it is
    Attempts attempts(line, routed, reader, leading);
    const bool isLatin = attempts.writing() == Writing::Latin && attempts.language() == ReadingLanguage::English;
    const bool isSentence = isLatin && lettersIn(attempts.best().text) > wordLength;
    if (isLatin && attempts.best().confidence >= doubtful && screen.isWide()) {
        if (!isSentence)
            askReaders(attempts, {leading}, 0);
        else if (attempts.isDoubtfullyLatin() && !attempts.hasAsked(leading))
            attempts.read(leading, ReadingMode::Line, 100);
    }
    if (!isShort || (isLatin && attempts.best().text.size() > 1))
        readWhole(attempts);
    return attempts.routed();
}

/// Reads a figure as a lone ideograph or kana. English makes a letter of nearly each of them and is sure of it, so the
/// others are asked first; they know Latin letters and digits from their own. False where it is neither.
bool LineRouter::readSquare(Attempts &attempts) const
{
    Reading best;
    for (const ReadingLanguage language : {ReadingLanguage::Japanese, attempts.leading()}) {
        if (language == ReadingLanguage::English || !reads(language) || attempts.hasAsked(language))
            continue;
        Reading reading = attempts.readAlone(language);
        const Writing writing = writingOf(reading.text);
        if ((writing == Writing::Latin || writing == Writing::Digits) && reading.confidence >= good)
            return false;
        const bool isOne = reading.text.size() == 1 && scriptsOf(reading.text).wide() == 1;
        if (isOne && reading.confidence >= good && reading.confidence > best.confidence)
            best = reading;
        if (writing == Writing::Kana && best.language == ReadingLanguage::Japanese)
            break;
    }
    if (!best.text.isEmpty())
        attempts.take(best);
    return !best.text.isEmpty();
}

/// The one who should know first; who knows better, by what comes out, and where no sense does, the leading one.
void LineRouter::readFirst(Attempts &attempts, ReadingLanguage first, bool isShort, const ScreenLanguages &screen) const
{
    attempts.read(first);
    // Now and then the engine sees no letters at all in a line of its own language.
    if (m_mayRetry && !isShort && attempts.best().text.isEmpty())
        attempts.read(first, ReadingMode::Whole);
    if (!isShort && attempts.language() == attempts.leading() && attempts.best().confidence >= known)
        readWhole(attempts);
    askReaders(attempts, readersOf(attempts.writing()), attempts.writing() == Writing::Latin ? -englishLead : 0);
    // Ideographs alone are Chinese as well as Japanese; one who is sure of them may still be the wrong one.
    const bool isEither = attempts.writing() == Writing::Han && attempts.language() == ReadingLanguage::Japanese;
    if (isEither && !screen.isKnown() && reads(ReadingLanguage::TraditionalChinese) &&
        !attempts.hasAsked(ReadingLanguage::TraditionalChinese))
        attempts.read(ReadingLanguage::TraditionalChinese, ReadingMode::Line, 4);
    if (attempts.best().confidence < known && (isShort || screen.isWide()))
        askReaders(attempts, {isShort ? ReadingLanguage::English : attempts.leading()}, 0);
}

void LineRouter::readWhole(Attempts &attempts) const
{
    if (m_mayRetry && attempts.best().confidence < good && attempts.hasAsked(attempts.language()) &&
        !attempts.hasAsked(attempts.language(), ReadingMode::Whole))
        attempts.read(attempts.language(), ReadingMode::Whole);
}

bool LineRouter::isDoubtful(const RoutedReading &routed) const
{
    return m_mayRetry && routed.best.confidence < doubtful;
}

RoutedReading LineRouter::readOn(const RoutedReading &earlier, const LineNormalizer &line, const PassReader &reader,
                                 const ScreenLanguages &screen) const
{
    const ReadingLanguage leading = firstReader(LineLooks::Ideographs, screen);
    Attempts attempts(line, earlier, reader, leading);
    if (attempts.best().confidence >= hopeless || !line.isVaried()) {
        askReaders(attempts, {leading}, 0);
        askReaders(attempts, m_languages, 0);
        askExtras(attempts, screen);
        readWhole(attempts);
    } else if (line.inkSize().width() >= sentenceWidth * line.inkSize().height()) {
        askExtras(attempts, screen); // of which the usual ones make as little as of a picture's edges
    }
    RoutedReading routed = attempts.routed();
    for (const Separation separation : separationsOf(line, false)) {
        if (separation == earlier.separation || routed.best.confidence >= doubtful)
            continue;
        // The colours may have been wrong, the language hardly was where the letters made sense.
        const ReadingLanguage first = routed.best.confidence >= hopeless ? routed.best.language : leading;
        Attempts others(line, toldApart(routed, separation), reader, leading);
        if (others.hasAsked(first))
            continue;
        others.read(first);
        if (routed.best.confidence < known && others.best().confidence >= hopeless)
            askReaders(others, readersOf(others.writing()), others.writing() == Writing::Latin ? -englishLead : 0);
        takeBetter(routed, others.routed());
    }
    return routed;
}

Reading LineRouter::readAlike(const LineNormalizer &line, const RoutedReading &earlier, const Comparison &comparison,
                              const PassReader &reader, const ScreenLanguages &screen) const
{
    const ReadingLanguage leading = firstReader(LineLooks::Ideographs, screen);
    if (has(m_extras, leading) && earlier.best.confidence < good) {
        Attempts attempts(line, earlier, reader, leading);
        if (!attempts.hasAsked(leading))
            attempts.read(leading);
        return attempts.best();
    }
    const ReadingLanguage wrong =
        screen.isSimplified() ? ReadingLanguage::TraditionalChinese : ReadingLanguage::SimplifiedChinese;
    const ReadingLanguage right =
        screen.isSimplified() ? ReadingLanguage::SimplifiedChinese : ReadingLanguage::TraditionalChinese;
    if (earlier.best.language != wrong || writingOf(earlier.best.text) != Writing::Han || !reads(right))
        return earlier.best;
    if (right == ReadingLanguage::SimplifiedChinese && comparison.characters > 0)
        return writingOf(comparison.simplified.text) == Writing::Han ? comparison.simplified : earlier.best;
    Attempts attempts(line, toldApart(earlier, earlier.separation), reader, right);
    attempts.read(right);
    return writingOf(attempts.best().text) == Writing::Han ? attempts.best() : earlier.best;
}

/// The ways to tell letters from their surroundings, the likeliest first.
QList<Separation> LineRouter::separationsOf(const LineNormalizer &line, bool isShort) const
{
    QList<Separation> separations{Separation::Axis, Separation::BrightFill};
    if (line.isVaried())
        separations = {Separation::BrightFill, Separation::Axis, Separation::DarkFill};
    if (!m_mayRetry || (isShort && !line.isVaried()))
        separations.resize(1);
    return separations;
}

void LineRouter::askReaders(Attempts &attempts, const QList<ReadingLanguage> &languages, double handicap) const
{
    for (const ReadingLanguage language : languages) {
        if (!isAtHome(attempts.best(), attempts.leading()) && reads(language) && !attempts.hasAsked(language))
            attempts.read(language, ReadingMode::Line, handicap);
    }
}

int LineRouter::comparableCharacters(const RoutedReading &routed) const
{
    const Reading &best = routed.best;
    const bool isComparable = m_mayRetry && has(m_extras, ReadingLanguage::SimplifiedChinese) &&
                              best.language == ReadingLanguage::TraditionalChinese && best.confidence >= doubtful &&
                              writingOf(best.text) == Writing::Han;
    return isComparable ? scriptsOf(best.text).han : 0;
}

Comparison LineRouter::compared(const RoutedReading &routed, const LineNormalizer &line, const PassReader &reader) const
{
    const Strip strip = line.strip(routed.separation, LineReader::stripShape(ReadingLanguage::SimplifiedChinese));
    const Reading simplified = reader.read(strip, ReadingLanguage::SimplifiedChinese, ReadingMode::Line, 1);
    const int characters = comparableCharacters(routed);
    return {simplified, (simplified.confidence - routed.best.confidence) * characters, characters};
}

/// What none of the expected languages can read may be in another.
void LineRouter::askExtras(Attempts &attempts, const ScreenLanguages &screen) const
{
    const QSize ink = attempts.line().inkSize();
    if (ink.width() < 2 * ink.height())
        return;
    for (const ReadingLanguage extra : m_extras) {
        // Of Hangul the others make very little sense, of simplified ideographs more.
        const double least = extra == ReadingLanguage::Korean ? unread : doubtful;
        if (attempts.best().confidence < least && screen.isOpen(extra))
            askReaders(attempts, {extra}, 12);
    }
}

} // namespace lucentra
