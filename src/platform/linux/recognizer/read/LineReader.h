#pragma once

#include "strip/LineNormalizer.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <optional>

namespace tesseract {
class TessBaseAPI;
}

namespace lucentra {

/// The languages there is a model for: the target languages in the order of their table, then those that are also
/// written in columns, which are read on an image that is turned by 90 degrees counter-clockwise.
enum class ReadingLanguage {
    TraditionalChinese,
    SimplifiedChinese,
    English,
    Japanese,
    Korean,
    VerticalTraditionalChinese,
    VerticalSimplifiedChinese,
    VerticalJapanese
};

/// The language of a vertical one in lines; nullopt for those in lines.
std::optional<ReadingLanguage> horizontalOf(ReadingLanguage vertical);

/// How a strip is read.
enum class ReadingMode {
    Usual, ///< nets of this program: the strip as it is, as in training; others: the engine finds the letters' extent
           ///< first
    Other, ///< the reverse: right now and then where the usual way sees no letters or cuts some off
};

/// A word's place in a reading.
struct ReadWord
{
    qsizetype start = 0; ///< in the text
    qsizetype length = 0;
    int left = 0;  ///< pixels of the strip; rough
    int right = 0; ///< behind the last column
    double confidence = 0;
};

/// What a reader made of a strip.
struct Reading
{
    QString text;          ///< one line, without white space at its ends; empty where nothing was recognised
    double confidence = 0; ///< 0 to 100; the mean over the words, weighted by their length
    ReadingLanguage language = ReadingLanguage::English; ///< of the model
    double weakest = 0;                                  ///< confidence of the least sure word
    QList<ReadWord> words; ///< as the engine cuts them, a syllable or an ideograph each at the least; not of English
};

/// The engines: made when they are first needed, lent to one read at a time, and kept. They take 2 (English) to 11 MB
/// (Chinese) each and share nothing, so there are never more than `maximum` of them (at least 4); then the one that has
/// been idle for longest makes place. Any thread, several at once.
class LineReader
{
public:
    /// With `usesLanguageCorrection` the models' word lists weigh in.
    explicit LineReader(bool usesLanguageCorrection = true, int maximum = 4);
    ~LineReader();

    /// Loads an engine of a language where there is none. False where its model isn't installed or is broken.
    bool prepare(ReadingLanguage language);

    /// Loads one of two English engines, which nearly every screen needs for Latin letters and digits. Returns false if
    /// both are there.
    bool prepareUsual();

    /// Whether an engine of a language is there, or couldn't be made.
    bool isLoaded(ReadingLanguage language);

    /// Reads a strip that fits the language (see `stripShape`). Empty where there is no such model. Waits for
    /// another read to end where `most` engines of the language are busy.
    Reading read(const Strip &strip, ReadingLanguage language, ReadingMode mode = ReadingMode::Usual, int most = 64);

    /// The processor time that the calling thread has worked so far to load engines, of whichever reader.
    static std::chrono::microseconds loadingTime();

    /// How large the letters should stand on a language's strips, whose height is the one that its network takes.
    static StripShape stripShape(ReadingLanguage language);

    /// Whether the model of a language is installed.
    static bool isInstalled(ReadingLanguage language);
    static bool isInstalled(const QString &model);

private:
    struct Engine
    {
        ReadingLanguage language;
        std::unique_ptr<tesseract::TessBaseAPI> api; // null where it failed
        bool hasOwnNet = false;
        bool isBusy = true;
        bool isLoaded = false;
        quint64 lastUse = 0;
    };
    class Loan;

    Engine *borrowed(ReadingLanguage language, int most);
    Engine *made(ReadingLanguage language, std::unique_lock<std::mutex> &lock);
    void giveBack(Engine &engine);
    bool makePlace();

    const bool m_usesLanguageCorrection;
    const std::size_t m_maximum;
    std::mutex m_mutex;
    std::condition_variable m_givenBack;
    std::list<Engine> m_engines;
    quint64 m_uses = 0;
};

} // namespace lucentra
