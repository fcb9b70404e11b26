#pragma once

#include "strip/LineNormalizer.h"

#include <QString>

#include <array>
#include <memory>
#include <mutex>
#include <optional>

namespace lucentra {

/// The languages there is a model for: the target languages in the order of their table, then those that are also
/// written in columns, which are read on an image that is turned by 90 degrees counter-clockwise.
enum class ReadingLanguage {
    TraditionalChinese,
    SimplifiedChinese,
    English,
    Japanese,
    Korean,
    VerticalChinese,
    VerticalJapanese
};

/// The language of a vertical one in lines, for Chinese the traditional one; nullopt for those in lines.
std::optional<ReadingLanguage> horizontalOf(ReadingLanguage vertical);

/// How a strip is read.
enum class ReadingMode {
    Usual, ///< nets of this program: the strip as it is, as in training; others: from the first letter to the last
    Other  ///< the reverse: right now and then where the usual way sees no letters or too many
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
    QList<ReadWord> words; ///< a syllable or an ideograph each, and what stands together of other letters
};

/// Reads strips with the installed models, which it loads when they are first needed and keeps. They take 1 to 3 MB
/// each. Any thread, several at once.
class LineReader
{
public:
    LineReader();
    ~LineReader();

    /// Loads a language's model where it isn't.
    void prepare(ReadingLanguage language) { model(language); }

    /// Reads a strip that fits the language (see `stripShape`). Empty where its model isn't installed or is broken.
    Reading read(const Strip &strip, ReadingLanguage language, ReadingMode mode = ReadingMode::Usual);

    /// How large the letters should stand on a language's strips, whose height is the one that its network takes.
    static StripShape stripShape(ReadingLanguage language);

    /// Whether the model of a language is installed.
    static bool isInstalled(ReadingLanguage language);
    static bool isInstalled(const QString &model);

private:
    struct Model;

    const Model *model(ReadingLanguage language);

    struct Place
    {
        std::once_flag isAsked;
        std::unique_ptr<const Model> model; // null where it failed
    };
    std::array<Place, size_t(ReadingLanguage::VerticalJapanese) + 1> m_models;
};

} // namespace lucentra
