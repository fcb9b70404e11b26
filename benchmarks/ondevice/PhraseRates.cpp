// Prints how many interface texts the phrases of this computer translate, per language, and how many lines
// ("code<TAB>text") are identified correctly.
// usage: phrase-rates TEXTS LINES [--misses]
//        phrase-rates TEXTS --answers [CODE ...]: prints one line per text with its translation in each language,
//        separated by tabs, as if it were alone on the screen. A translation is empty if there is no new text.
#include "CatalogueFolders.h"
#include "PhraseLanguage.h"
#include "PhraseCollector.h"
#include "PhraseFile.h"
#include "PhraseLookup.h"
#include "ScreenLanguageIdentifier.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <map>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QStringList linesOf(const QString &path)
{
    QFile file(path);
    QStringList lines;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
            if (!line.startsWith(u'#'))
                lines.append(line);
        }
    }
    return lines;
}

void printRates(const PhraseFile &file, const QStringList &texts, bool withMisses)
{
    for (const Language &language : phraseLanguages) {
        const auto lookup = PhraseLookup::between(file, {u"en"_s, language.code});
        if (!lookup)
            continue;
        int hits = 0;
        for (const QString &text : texts) {
            const auto found = lookup->translate(text);
            hits += found ? 1 : 0;
            if (withMisses)
                std::printf("  %-30s %-4.2f %s\n", qUtf8Printable(text), found ? found->confidence : 0.0,
                            found ? qUtf8Printable(found->text) : "-");
        }
        std::printf("%s %d of %d\n", language.code.data(), hits, int(texts.size()));
    }
}

void printIdentification(std::shared_ptr<const PhraseFile> file, const QStringList &lines, bool withMisses)
{
    ScreenLanguageIdentifier identifier([file] { return file; });
    std::map<QString, std::pair<int, int>> rates;
    int right = 0;
    for (const QString &line : lines) {
        const QString code = line.section(u'\t', 0, 0);
        const QString text = line.section(u'\t', 1);
        const QString told = identifier.identify({text}).first();
        ++rates[code].second;
        if (told == code) {
            ++rates[code].first;
            ++right;
        } else if (withMisses) {
            std::printf("  %s, not %s: %s\n", qUtf8Printable(code), qUtf8Printable(told), qUtf8Printable(text));
        }
    }
    for (const auto &[code, rate] : rates)
        std::printf("%s %d of %d\n", qUtf8Printable(code), rate.first, rate.second);
    std::printf("all %d of %d\n", right, int(lines.size()));
}

void printAnswers(const std::shared_ptr<const PhraseFile> &file, const QStringList &texts, const QStringList &targets)
{
    ScreenLanguageIdentifier identifier([file] { return file; });
    for (const QString &text : texts) {
        const QString source = identifier.identify({text}).first();
        QStringList answers{text};
        for (const QString &target : targets) {
            const auto lookup = PhraseLookup::between(*file, {source, target});
            const auto found = lookup ? lookup->translate(text) : std::nullopt;
            answers.append(found && found->text != text ? found->text : QString());
        }
        std::puts(qUtf8Printable(answers.join(u'\t')));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: phrase-rates TEXTS LINES [--misses]\n", stderr);
        return 2;
    }
    const bool withMisses = arguments.contains(u"--misses"_s);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const std::atomic<bool> isCancelled = false;
    if (!buildPhraseFile(surveyCatalogues(CatalogueFolders::ofThisSystem()), buffer, isCancelled))
        return 1;
    const auto file = PhraseFile::fromBytes(buffer.data());
    if (arguments[2] == "--answers"_L1) {
        printAnswers(file, linesOf(arguments[1]), arguments.sliced(3));
        return 0;
    }
    std::printf("%u phrases of %u catalogues\n", file->header().phrases, file->header().catalogues);
    printRates(*file, linesOf(arguments[1]), withMisses);
    std::puts("languages identified with the phrases:");
    printIdentification(file, linesOf(arguments[2]), withMisses);
    std::puts("without:");
    printIdentification(nullptr, linesOf(arguments[2]), withMisses);
    return 0;
}
