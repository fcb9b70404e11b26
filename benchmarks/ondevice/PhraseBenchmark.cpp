// What the phrases of this computer cost: collecting them, looking up, identifying languages.
#include "CatalogueFolders.h"
#include "PhraseLanguage.h"
#include "PhraseCollector.h"
#include "PhraseFile.h"
#include "PhraseLookup.h"
#include "ScreenLanguageIdentifier.h"

#include <QBuffer>
#include <QTemporaryFile>

#include <benchmark/benchmark.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QByteArray build(const CatalogueSurvey &survey)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const std::atomic<bool> isCancelled = false;
    buildPhraseFile(survey, buffer, isCancelled);
    return buffer.data();
}

std::shared_ptr<const PhraseFile> phrases()
{
    static const auto file = PhraseFile::fromBytes(build(surveyCatalogues(CatalogueFolders::ofThisSystem())));
    return file;
}

void survey(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(surveyCatalogues(CatalogueFolders::ofThisSystem()));
}
BENCHMARK(survey)->Unit(benchmark::kMillisecond);

void collectPhrases(benchmark::State &state)
{
    const CatalogueSurvey catalogues = surveyCatalogues(CatalogueFolders::ofThisSystem());
    for (auto _ : state) {
        QTemporaryFile file;
        const std::atomic<bool> isCancelled = false;
        if (!file.open() || !buildPhraseFile(catalogues, file, isCancelled))
            state.SkipWithError("no file");
        state.counters["megabytes"] = double(file.size()) / (1 << 20);
    }
    state.counters["catalogues"] = double(catalogues.files.size());
    state.counters["phrases"] = phrases()->header().phrases;
}
BENCHMARK(collectPhrases)->Unit(benchmark::kMillisecond)->MinTime(1);

void findPhrase(benchmark::State &state)
{
    const QStringList keys{u"cancel"_s, u"file"_s, u"select all"_s, u"no such phrase"_s, u"open recent"_s, u"help"_s};
    qsizetype i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(phrases()->fromEnglish(0, keys[++i % keys.size()]));
}
BENCHMARK(findPhrase);

void translateLine(benchmark::State &state, const QString &line)
{
    const auto lookup = PhraseLookup::between(*phrases(), {u"en"_s, u"ja"_s});
    for (auto _ : state)
        benchmark::DoNotOptimize(lookup->translate(line));
}
BENCHMARK_CAPTURE(translateLine, known, u"Cancel"_s);
BENCHMARK_CAPTURE(translateLine, unknown, u"The old man went fishing once more in the morning"_s);

void identifyLines(benchmark::State &state)
{
    ScreenLanguageIdentifier identifier(&phrases);
    const QStringList lines{u"Save changes before closing?"_s, u"關閉前要儲存變更嗎？"_s,
                            u"閉じる前に変更を保存しますか？"_s, u"Änderungen vor dem Schließen speichern?"_s,
                            u"Показать скрытые файлы"_s};
    for (auto _ : state)
        benchmark::DoNotOptimize(identifier.identify(lines));
    state.SetItemsProcessed(state.iterations() * lines.size());
}
BENCHMARK(identifyLines)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
