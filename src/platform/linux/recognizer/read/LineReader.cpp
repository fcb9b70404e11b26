#include "read/LineReader.h"

#include "Rules.h"
#include "read/EngineModels.h"
#include "read/ThreadClock.h"
#include "strip/StripParts.h"
#include "strip/StrokeShape.h"

#include <QRegularExpression>

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

thread_local std::chrono::microseconds timeOfLoading{0};

/// Whether there is a real space between two words of Korean, which makes a word of each syllable. The engine's boxes
/// are rough, so the widest gap about there counts.
bool isSpace(const std::vector<std::uint8_t> &darkest, int left, int right, int height)
{
    int widest = 0;
    int run = 0;
    const int end = std::min(int(darkest.size()), right + height / 5);
    for (int x = std::max(0, left - height / 5); x < end; ++x) {
        run = darkest[std::size_t(x)] >= lightestInk ? run + 1 : 0;
        widest = std::max(widest, run);
    }
    return 100 * widest >= 13 * height;
}

bool isHangul(QChar character)
{
    return character.script() == QChar::Script_Hangul;
}

/// A character of a word, with the columns of the strip where it is about.
struct Symbol
{
    QString text;
    int left = 0;
    int right = 0;
};

/// The characters of the word that an iterator is at.
std::vector<Symbol> symbolsOf(tesseract::ResultIterator iterator)
{
    std::vector<Symbol> symbols;
    do {
        const std::unique_ptr<char[]> text(iterator.GetUTF8Text(tesseract::RIL_SYMBOL));
        int top = 0;
        int bottom = 0;
        Symbol symbol{QString::fromUtf8(text.get())};
        iterator.BoundingBox(tesseract::RIL_SYMBOL, &symbol.left, &top, &symbol.right, &bottom);
        if (!symbol.text.isEmpty())
            symbols.push_back(symbol);
    } while (!iterator.IsAtFinalElement(tesseract::RIL_WORD, tesseract::RIL_SYMBOL) &&
             iterator.Next(tesseract::RIL_SYMBOL));
    return symbols;
}

/// A word whose I, l and 1 are what they look like. A bar among other characters than digits isn't a 1. What has a flag
/// is one, unless letters follow: in some typewriter fonts l looks much the same.
QString withSeenOnes(const QString &word, const tesseract::ResultIterator &iterator, const Strip &strip)
{
    if (!isOn("ones"))
        return word;
    static const QRegularExpression slender(u"[1Il]"_s);
    if (word.size() < 2 || !word.contains(slender))
        return word;
    const std::vector<Symbol> symbols = symbolsOf(iterator);
    QString seen;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const auto &[text, left, right] = symbols[i];
        const QChar before = i > 0 ? symbols[i - 1].text.back() : QChar();
        const QChar after = i + 1 < symbols.size() ? symbols[i + 1].text.front() : QChar();
        const bool mayBeI = text == u"1"_s && !before.isDigit() && !after.isDigit();
        const bool mayBeOne = (text == u"I"_s || text == u"l"_s) && !after.isLetter() && before != u'l';
        if (mayBeI && strokeShapeAt(strip, left, right) == StrokeShape::Bar)
            seen += u'I';
        else if (mayBeOne && strokeShapeAt(strip, left, right) == StrokeShape::One)
            seen += u'1';
        else
            seen += text;
    }
    return seen.size() == word.size() ? seen : word;
}

} // namespace

/// Holds an engine for as long as it reads.
class LineReader::Loan
{
public:
    Loan(LineReader &reader, ReadingLanguage language, int most)
        : m_reader(reader)
        , m_engine(*reader.borrowed(language, most))
    {
    }
    ~Loan() { m_reader.giveBack(m_engine); }
    Q_DISABLE_COPY_MOVE(Loan)

    tesseract::TessBaseAPI *api() const { return m_engine.api.get(); }
    bool hasOwnNet() const { return m_engine.hasOwnNet; }

private:
    LineReader &m_reader;
    Engine &m_engine;
};

LineReader::LineReader(bool usesLanguageCorrection, int maximum)
    : m_usesLanguageCorrection(usesLanguageCorrection)
    , m_maximum(std::size_t(std::max(4, maximum)))
{
}

LineReader::~LineReader() = default;

bool LineReader::prepare(ReadingLanguage language)
{
    return Loan(*this, language, 1).api() != nullptr;
}

bool LineReader::prepareUsual()
{
    constexpr int usual = 2;
    std::unique_lock lock(m_mutex);
    if (std::ranges::count(m_engines, ReadingLanguage::English, &Engine::language) >= usual ||
        m_engines.size() >= m_maximum)
        return false;
    giveBack(*made(ReadingLanguage::English, lock));
    return true;
}

LineReader::Engine *LineReader::borrowed(ReadingLanguage language, int most)
{
    std::unique_lock lock(m_mutex);
    while (true) {
        int busy = 0;
        for (Engine &engine : m_engines) {
            if (engine.language == language && !engine.isBusy) {
                engine.isBusy = true;
                return &engine;
            }
            busy += engine.language == language ? 1 : 0;
        }
        if (busy < most && makePlace())
            break;
        m_givenBack.wait(lock);
    }
    return made(language, lock);
}

/// Makes an engine, which is busy then, without the lock.
LineReader::Engine *LineReader::made(ReadingLanguage language, std::unique_lock<std::mutex> &lock)
{
    Engine &engine = m_engines.emplace_back(Engine{language, nullptr});
    lock.unlock();
    const auto start = threadTime();
    LoadedEngine loaded = makeEngine(language, m_usesLanguageCorrection);
    engine.api = std::move(loaded.api);
    engine.hasOwnNet = loaded.hasOwnNet;
    timeOfLoading += threadTime() - start;
    return &engine;
}

bool LineReader::isLoaded(ReadingLanguage language)
{
    const std::lock_guard lock(m_mutex);
    return std::ranges::any_of(
        m_engines, [language](const Engine &engine) { return engine.language == language && engine.isLoaded; });
}

std::chrono::microseconds LineReader::loadingTime()
{
    return timeOfLoading;
}

void LineReader::giveBack(Engine &engine)
{
    {
        const std::lock_guard lock(m_mutex);
        engine.isBusy = false;
        engine.isLoaded = true;
        engine.lastUse = ++m_uses;
    }
    m_givenBack.notify_all();
}

bool LineReader::makePlace()
{
    if (m_engines.size() < m_maximum)
        return true;
    const auto oldest = std::min_element(m_engines.begin(), m_engines.end(), [](const Engine &a, const Engine &b) {
        return std::pair(a.isBusy, a.lastUse) < std::pair(b.isBusy, b.lastUse);
    });
    if (oldest->isBusy)
        return false;
    m_engines.erase(oldest);
    return true;
}

StripShape LineReader::stripShape(ReadingLanguage language)
{
    // The heights are those of the networks. Of shares from .55 to .78 these left the fewest errors.
    StripShape shape;
    const bool isSmall = language == ReadingLanguage::English || language == ReadingLanguage::Japanese ||
                         language == ReadingLanguage::VerticalTraditionalChinese ||
                         language == ReadingLanguage::VerticalSimplifiedChinese;
    shape.height = isSmall ? 36 : 48;
    shape.inkShare = language == ReadingLanguage::Japanese ? 0.72 : 0.66;
    if (language == ReadingLanguage::VerticalSimplifiedChinese)
        shape.inkShare = 0.6;
    return shape;
}

Reading LineReader::read(const Strip &strip, ReadingLanguage language, ReadingMode mode, int most)
{
    if (!strip)
        return {};
    const Loan loan(*this, language, most);
    tesseract::TessBaseAPI *api = loan.api();
    if (!api)
        return {};
    const bool isWhole = loan.hasOwnNet() == (mode == ReadingMode::Usual);
    api->SetPageSegMode(isWhole ? tesseract::PSM_RAW_LINE : tesseract::PSM_SINGLE_LINE);
    api->SetImage(strip.get());
    api->SetSourceResolution(300);
    Reading reading{{}, 0, language};
    if (api->Recognize(nullptr) != 0)
        return reading;
    const std::unique_ptr<tesseract::ResultIterator> words(api->GetIterator());
    double sum = 0;
    qsizetype length = 0;
    int end = 0;
    std::vector<std::uint8_t> darkest;
    if (language == ReadingLanguage::Korean)
        darkest = darkestOfColumns(strip);
    while (words && !words->Empty(tesseract::RIL_WORD)) {
        const std::unique_ptr<char[]> text(words->GetUTF8Text(tesseract::RIL_WORD));
        QString word = QString::fromUtf8(text.get()).simplified();
        if (!word.isEmpty()) {
            if (!horizontalOf(language))
                word = withSeenOnes(word, *words, strip);
            const double confidence = double(words->Confidence(tesseract::RIL_WORD));
            int left = 0;
            int top = 0;
            int right = 0;
            int bottom = 0;
            words->BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom);
            const bool areSyllables = !reading.text.isEmpty() && isHangul(reading.text.back()) && isHangul(word.at(0));
            if (!reading.text.isEmpty() && (!areSyllables || isSpace(darkest, end, left, pixGetHeight(strip.get()))))
                reading.text += QLatin1Char(' ');
            end = right;
            if (language != ReadingLanguage::English)
                reading.words.append({reading.text.size(), word.size(), left, right, confidence});
            reading.text += word;
            sum += confidence * double(word.size());
            reading.weakest = length == 0 ? confidence : std::min(reading.weakest, confidence);
            length += word.size();
        }
        if (!words->Next(tesseract::RIL_WORD))
            break;
    }
    if (length > 0)
        reading.confidence = sum / double(length);
    return reading;
}

std::optional<ReadingLanguage> horizontalOf(ReadingLanguage vertical)
{
    switch (vertical) {
    case ReadingLanguage::VerticalJapanese:
        return ReadingLanguage::Japanese;
    case ReadingLanguage::VerticalTraditionalChinese:
        return ReadingLanguage::TraditionalChinese;
    case ReadingLanguage::VerticalSimplifiedChinese:
        return ReadingLanguage::SimplifiedChinese;
    default:
        return {};
    }
}

} // namespace lucentra
