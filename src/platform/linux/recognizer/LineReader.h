#pragma once

#include "LineNormalizer.h"

#include <QString>

#include <map>
#include <memory>

namespace tesseract {
class TessBaseAPI;
}

namespace lucentra {

/// The languages there is a model for, in the order in which they are worth loading.
enum class ReadingLanguage { TraditionalChinese, English, Japanese, SimplifiedChinese, Korean };

/// How the letters are looked for on a strip.
enum class ReadingMode {
    Line,  ///< the engine finds the letters' extent itself: right more often
    Whole, ///< the strip as it is: at its best where the former sees no letters or cuts some off
};

/// What a reader made of a strip.
struct Reading
{
    QString text;          ///< one line, without white space at its ends; empty where nothing was recognised
    double confidence = 0; ///< 0 to 100; the mean over the words, weighted by their length
    ReadingLanguage language = ReadingLanguage::English; ///< of the model
};

/// The engines of one worker: one a language, made when it is first needed and kept until they are released.
/// One thread at a time.
class LineReader
{
public:
    /// With `usesLanguageCorrection` the models' word lists weigh in.
    explicit LineReader(bool usesLanguageCorrection = true);
    ~LineReader();

    /// Loads the engine of a language where that hasn't happened. False where its model isn't installed or is broken.
    bool prepare(ReadingLanguage language);

    /// Reads a strip whose height fits the language (see `stripHeight`). Empty where there is no such model.
    Reading read(const Strip &strip, ReadingLanguage language, ReadingMode mode = ReadingMode::Line);

    /// Frees the memory of all engines.
    void release();

    /// The height in pixels that a language's network takes.
    static int stripHeight(ReadingLanguage language);

    /// Whether the model of a language is installed.
    static bool isInstalled(ReadingLanguage language);

private:
    tesseract::TessBaseAPI *engine(ReadingLanguage language);

    bool m_usesLanguageCorrection;
    std::map<ReadingLanguage, std::unique_ptr<tesseract::TessBaseAPI>> m_engines; // null where it failed
};

} // namespace lucentra
