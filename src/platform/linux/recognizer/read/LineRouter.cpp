#include "read/LineRouter.h"

#include "Rules.h"
#include "find/TextMaps.h"
#include "read/LatinLetters.h"
#include "read/Writing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace lucentra {
namespace {

// Confidences of a reading, 0 to 100.
constexpr double certain = 88;      // another language isn't worth its time, even where the script is open
constexpr double likely = 75;       // nor where no line of the screen speaks for it
constexpr double good = 80;         // nor is another try at the same
constexpr double doubtful = 70;     // other languages are asked as well
constexpr double doubtfulWide = 80; // likewise with ideographs, kana or syllables; wrong ones are read more surely
constexpr double hopeless = 40;     // of a picture's edges, or of letters that weren't told apart from it
constexpr double englishLead = 12;  // English reads Latin letters better than others that are as confident

double sumOf(const ScriptShares &scripts)
{
    return std::accumulate(scripts.begin(), scripts.end(), 0.0);
}

double worthOf(const Reading &reading)
{
    const Writing writing = writingOf(reading.text);
    const bool isLatin = writing == Writing::Latin || writing == Writing::Digits;
    return reading.confidence + (reading.language == ReadingLanguage::English && isLatin ? englishLead : 0);
}

bool isChinese(ReadingLanguage language)
{
    return language == ReadingLanguage::TraditionalChinese || language == ReadingLanguage::SimplifiedChinese;
}

ReadingLanguage chineseOf(const ScreenLanguages &screen)
{
    return screen.isSimplified() ? ReadingLanguage::SimplifiedChinese : ReadingLanguage::TraditionalChinese;
}

/// Whether a figure is as wide as a lone ideograph or kana.
bool isSquare(const QSize &ink)
{
    return ink.height() >= 8 && 20 * ink.width() >= 13 * ink.height() && 10 * ink.width() <= 15 * ink.height();
}

bool isUnsure(const Reading &reading)
{
    return reading.confidence < (scriptsOf(reading.text).wide() > 0 ? doubtfulWide : doubtful);
}

} // namespace

double wideShare(const ScriptShares &seen)
{
    const double all = sumOf(seen);
    return all > 0 ? 1 - seen[TextMaps::Latin] / all : 0;
}

/// One line under the router's hands: who has read it, and the best that came out.
class LineRouter::Attempts
{
public:
    /// Goes on from what has been read.
    Attempts(const LineNormalizer &line, const ScriptShares &scripts, RoutedReading routed, const PassReader &reader)
        : m_line(line)
        , m_scripts(scripts)
        , m_reader(reader)
        , m_routed(std::move(routed))
    {
    }

    /// Reads once more, unless it has been read so. The better reading stays.
    Reading read(ReadingLanguage language, Separation separation, ReadingMode mode = ReadingMode::Usual)
    {
        const Attempt attempt{language, separation, mode};
        if (m_routed.attempts.contains(attempt))
            return {};
        m_routed.attempts.append(attempt);
        const Strip &strip = stripFor(language, separation);
        Reading reading = m_reader.read(strip, language, mode);
        const Scripts scripts = scriptsOf(reading.text);
        const bool isKorean = 2 * scripts.hangul > scripts.all() ||
                              (scripts.hangul >= 2 && m_scripts[TextMaps::Hangul] > 0); // digits for letters
        if (language == ReadingLanguage::Korean && isKorean && isOn("latin in korean"))
            reading = withLatinLetters(reading, stripFor(ReadingLanguage::English, separation), m_reader);
        take(reading, separation);
        return reading;
    }

    /// Takes a reading that is better than the best one so far.
    void take(const Reading &reading, Separation separation)
    {
        if (reading.text.isEmpty() || worthOf(reading) <= worthOf(best()))
            return;
        m_routed.best = reading;
        m_routed.separation = separation;
    }

    const Reading &best() const { return m_routed.best; }
    const RoutedReading &routed() const { return m_routed; }
    const ScriptShares &scripts() const { return m_scripts; }
    const LineNormalizer &line() const { return m_line; }

private:
    const Strip &stripFor(ReadingLanguage language, Separation separation)
    {
        Strip &strip = m_strips[{separation, language}];
        if (!strip)
            strip = m_line.strip(separation, LineReader::stripShape(language));
        return strip;
    }

    const LineNormalizer &m_line;
    const ScriptShares m_scripts;
    const PassReader &m_reader;
    std::map<std::pair<Separation, ReadingLanguage>, Strip> m_strips;
    RoutedReading m_routed;
};

LineRouter::LineRouter(QList<ReadingLanguage> languages, QList<ReadingLanguage> extras, bool mayRetry)
    : m_languages(std::move(languages))
    , m_extras(std::move(extras))
    , m_mayRetry(mayRetry)
{
}

bool LineRouter::reads(ReadingLanguage language) const
{
    return m_languages.contains(language) || m_extras.contains(language);
}

bool LineRouter::readsBothChinese() const
{
    return reads(ReadingLanguage::TraditionalChinese) && reads(ReadingLanguage::SimplifiedChinese);
}

/// The one of the languages with ideographs that the screen is in.
ReadingLanguage LineRouter::leadingOf(const ScreenLanguages &screen) const
{
    QList<ReadingLanguage> wide = m_languages;
    wide.removeAll(ReadingLanguage::English);
    const ReadingLanguage leading = wide.isEmpty() ? ReadingLanguage::English : screen.leading(wide);
    return isChinese(leading) && readsBothChinese() ? chineseOf(screen) : leading;
}

/// Who may know a line by its scripts, the likeliest first.
QList<ReadingLanguage> LineRouter::readersFor(const ScriptShares &scripts, const ScreenLanguages &screen) const
{
    const double latin = scripts[TextMaps::Latin];
    const double wide = sumOf(scripts) - latin;
    const ReadingLanguage leading = leadingOf(screen);
    QList<ReadingLanguage> readers;
    if (latin > 4 * wide)
        readers = {ReadingLanguage::English, leading};
    else if (scripts[TextMaps::Hangul] > 0.3 * wide)
        // Among ideographs, what looks like syllables is rather kana.
        readers = scripts[TextMaps::Ideographs] > 0.3 * wide
                      ? QList{ReadingLanguage::Japanese, ReadingLanguage::Korean, leading}
                      : QList{ReadingLanguage::Korean, leading};
    else if (scripts[TextMaps::Kana] > 0.12 * wide)
        readers = {ReadingLanguage::Japanese, leading};
    else
        readers = {leading, ReadingLanguage::Japanese};
    if (latin > wide)
        readers.append(ReadingLanguage::English);
    QList<ReadingLanguage> known;
    for (const ReadingLanguage reader : readers) {
        if (reads(reader) && !known.contains(reader))
            known.append(reader);
    }
    return known.isEmpty() ? m_languages : known;
}

RoutedReading LineRouter::read(const LineNormalizer &line, const ScriptShares &scripts, const PassReader &reader,
                               const ScreenLanguages &screen) const
{
    const QList<ReadingLanguage> readers = readersFor(scripts, screen);
    RoutedReading routed;
    routed.separation = line.separations().first();
    Attempts attempts(line, scripts, routed, reader);
    if (isOn("lone squares") && m_mayRetry && isSquare(line.inkSize()) && readSquare(attempts, leadingOf(screen)))
        return attempts.routed();
    for (const Separation separation : line.separations()) {
        attempts.read(readers.first(), separation);
        if (isOn("whole strips") && m_mayRetry && attempts.best().confidence < good)
            attempts.read(readers.first(), separation, ReadingMode::Other);
        // The net tells Latin letters and Hangul from others well, kana from ideographs less so.
        const bool isLatin = sumOf(scripts) > 0 && readers.first() == ReadingLanguage::English;
        const Scripts read = scriptsOf(attempts.best().text);
        const bool isHangul = readers.first() == ReadingLanguage::Korean && 2 * read.hangul > read.all();
        const bool isChinese = !screen.hasKana() && readers.first() != ReadingLanguage::Japanese;
        const double enough = isLatin || isHangul ? doubtful : isChinese ? likely : certain;
        for (qsizetype i = 1; i < readers.size() && attempts.best().confidence < enough; ++i)
            attempts.read(readers[i], separation);
        if (!m_mayRetry || attempts.best().confidence >= (line.separations().size() > 2 ? likely : hopeless))
            break;
    }
    return attempts.routed();
}

/// Reads a figure as a lone ideograph or kana. English makes a letter of nearly each of them and is sure of it, so the
/// others are asked first; they know Latin letters and digits from their own. False where it is neither.
bool LineRouter::readSquare(Attempts &attempts, ReadingLanguage leading) const
{
    const Separation separation = attempts.line().separations().first();
    Reading best;
    for (const ReadingLanguage language : {ReadingLanguage::Japanese, leading}) {
        if (language == ReadingLanguage::English || !reads(language))
            continue;
        Reading reading = attempts.read(language, separation);
        if (reading.confidence < hopeless)
            reading = attempts.read(language, separation, ReadingMode::Other);
        const Writing writing = writingOf(reading.text);
        if ((writing == Writing::Latin || writing == Writing::Digits) && reading.confidence >= good)
            return false;
        const bool isOne = reading.text.size() == 1 && scriptsOf(reading.text).wide() == 1;
        if (isOne && reading.confidence >= good && reading.confidence > best.confidence)
            best = reading;
        if (writing == Writing::Kana && best.language == ReadingLanguage::Japanese)
            break;
    }
    attempts.take(best, separation);
    return !best.text.isEmpty();
}

bool LineRouter::isDoubtful(const RoutedReading &routed) const
{
    return m_mayRetry && isUnsure(routed.best);
}

RoutedReading LineRouter::readOn(const RoutedReading &earlier, const LineNormalizer &line, const ScriptShares &scripts,
                                 const PassReader &reader, const ScreenLanguages &screen) const
{
    Attempts attempts(line, scripts, earlier, reader);
    const QList<ReadingLanguage> readers = readersFor(scripts, screen) + m_languages + m_extras; // the net may be wrong
    for (const Separation separation : line.separations()) {
        // The colours may have been wrong, the language hardly was where the letters made sense.
        if (attempts.best().confidence >= hopeless)
            attempts.read(attempts.best().language, separation);
        for (const ReadingLanguage language : readers) {
            if (!isUnsure(attempts.best()))
                return attempts.routed();
            attempts.read(language, separation);
        }
    }
    return attempts.routed();
}

Reading LineRouter::readAlike(const LineNormalizer &line, const RoutedReading &earlier, const PassReader &reader,
                              const ScreenLanguages &screen) const
{
    constexpr double muchSurer = 25; // than this, and the line is of the other kind after all
    const ReadingLanguage chinese = chineseOf(screen);
    if (!isChinese(earlier.best.language) || earlier.best.language == chinese ||
        writingOf(earlier.best.text) != Writing::Han || !readsBothChinese())
        return earlier.best;
    Attempts attempts(line, {}, {{}, earlier.separation, {}}, reader);
    attempts.read(chinese, earlier.separation);
    const bool isAlike = writingOf(attempts.best().text) == Writing::Han &&
                         attempts.best().confidence >= earlier.best.confidence - muchSurer;
    return isAlike ? attempts.best() : earlier.best;
}

} // namespace lucentra
