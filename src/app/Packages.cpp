#include "Packages.h"

#include "read/LineReader.h"

#include <QLatin1StringView>
#include <QStandardPaths>

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

/// A package manager. Packages of models have names of their own everywhere, other ones don't.
struct Manager
{
    QLatin1StringView program;
    QLatin1StringView command;
    QLatin1StringView modelPrefix; ///< before the model's name, in place of Debian's "tesseract-ocr-"
};
constexpr Manager managers[] = {
    {"apt-get"_L1, "sudo apt install"_L1, {}},
    {"dnf"_L1, "sudo dnf install"_L1, "tesseract-langpack-"_L1},
    {"pacman"_L1, "sudo pacman -S"_L1, "tesseract-data-"_L1},
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

QString installCommand(const QStringList &packages)
{
    for (const Manager &manager : managers) {
        if (QStandardPaths::findExecutable(manager.program).isEmpty())
            continue;
        QString command = manager.command;
        for (QString package : packages) {
            if (constexpr auto debianPrefix = "tesseract-ocr-"_L1;
                !manager.modelPrefix.isEmpty() && package.startsWith(debianPrefix))
                package = manager.modelPrefix + package.mid(debianPrefix.size()).replace(u'-', u'_');
            command += u' ' + package;
        }
        return command;
    }
    return packages.join(u' ');
}

} // namespace lucentra
