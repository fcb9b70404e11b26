#include "ReadingPackages.h"

#include "read/LineReader.h"

#include <span>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// What reads a language on the screen.
struct ReadingRow
{
    ReadingLanguage language;
    QLatin1StringView tag;
    QLatin1StringView package;
};
constexpr ReadingRow readingRows[] = {
    {ReadingLanguage::English, "en"_L1, "tesseract-ocr-eng"_L1},
    {ReadingLanguage::TraditionalChinese, "zh-Hant"_L1, "tesseract-ocr-chi-tra"_L1},
    {ReadingLanguage::SimplifiedChinese, "zh-Hans"_L1, "tesseract-ocr-chi-sim"_L1},
    {ReadingLanguage::Japanese, "ja"_L1, "tesseract-ocr-jpn"_L1},
    {ReadingLanguage::Korean, "ko"_L1, "tesseract-ocr-kor"_L1},
};
constexpr ReadingRow verticalRows[] = {
    {ReadingLanguage::VerticalTraditionalChinese, {}, "tesseract-ocr-chi-tra-vert"_L1},
    {ReadingLanguage::VerticalSimplifiedChinese, {}, "tesseract-ocr-chi-sim-vert"_L1},
    {ReadingLanguage::VerticalJapanese, {}, "tesseract-ocr-jpn-vert"_L1},
};

QStringList namesOf(std::span<const ReadingRow> rows, QLatin1StringView ReadingRow::*name, bool areInstalled)
{
    QStringList names;
    for (const ReadingRow &row : rows) {
        if (LineReader::isInstalled(row.language) == areInstalled)
            names.append(row.*name);
    }
    return names;
}

} // namespace

QStringList missingReadingPackages()
{
    return namesOf(readingRows, &ReadingRow::package, false);
}

QStringList missingVerticalPackages()
{
    return namesOf(verticalRows, &ReadingRow::package, false);
}

QStringList readableLanguages()
{
    return namesOf(readingRows, &ReadingRow::tag, true);
}

} // namespace lucentra
