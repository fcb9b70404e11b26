// What one pass costs besides the service's own time: N blocks through each engine, to a local server that answers at
// once. "Time" is the whole pass, the server's share included; "CPU" is the calling thread alone, so in the rows of the
// clients it is our own time, libcurl's included. Connections are kept, except in the rows that say otherwise.

#include "FakeSecretStorage.h"
#include "HttpSession.h"
#include "KeychainStore.h"
#include "MainQueue.h"
#include "QueuedServer.h"
#include "ServiceResponder.h"
#include "Settings.h"
#include "TestCertificates.h"
#include "TestTexts.h"
#include "TranslationManager.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// Lines as long as those of a screen.
QStringList screenOf(qsizetype count)
{
    QStringList texts;
    for (qsizetype i = 0; i < count; ++i)
        texts.append(u"Settings that apply to line %1 of the page"_s.arg(i));
    return texts;
}

QueuedAnswer translated(const ReceivedRequest &request)
{
    return answerAsService(request, [](const QString &text) { return u"套用於頁面的設定："_s + text.right(20); });
}

/// One server and one session for all rows.
struct Wire
{
    TestTexts texts;
    QueuedServer plain;
    QueuedServer secure{serverCertificate(u"here"_s)};
    HttpSession session{HttpSession::Options{.certificateFile = certificateFile(u"authority.pem"_s), .proxies = {}}};
    TranslationClients clients = remoteClients(session, texts.manager, hostsAt(plain.origin()));
    TranslationClients secureClients = remoteClients(session, texts.manager, hostsAt(secure.origin()));

    Wire()
    {
        plain.respondWith(translated);
        secure.respondWith(translated);
    }
};

Wire &wire()
{
    static Wire theOne;
    return theOne;
}

const auto always = [] {}; // every request may be sent

EngineRequest requestOf(TranslationEngine engine, const QStringList &texts, const QString &key = u"key"_s)
{
    return {.engine = engine,
            .texts = texts,
            .target = u"zh-Hant"_s,
            .key = key,
            .model = u"m"_s,
            .baseUrl = QString::fromLatin1(wire().plain.origin()),
            .region = u"region"_s};
}

void runClient(benchmark::State &state, TranslationEngine engine, const QString &key)
{
    const EngineRequest request = requestOf(engine, screenOf(state.range(0)), key);
    for (auto _ : state) {
        if (wire().clients.remote(request, always).size() != request.texts.size())
            state.SkipWithError("not one translation per text");
    }
}

/// A pass over TLS whose session knows the server (`isKept`) or has never spoken to it.
void securePass(benchmark::State &state, bool isKept)
{
    const EngineRequest request = requestOf(TranslationEngine::deepl, screenOf(40));
    for (auto _ : state) {
        HttpSession fresh(HttpSession::Options{.certificateFile = certificateFile(u"authority.pem"_s), .proxies = {}});
        const TranslationClients clients =
            isKept ? wire().secureClients : remoteClients(fresh, wire().texts.manager, hostsAt(wire().secure.origin()));
        if (clients.remote(request, always).size() != request.texts.size())
            state.SkipWithError("not one translation per text");
    }
}

/// Through the manager: settings from their file, one search of the keys, a worker, the main queue.
void managedPass(benchmark::State &state)
{
    TestTexts &texts = wire().texts;
    texts.settings.write(settings::translationEngine, qint64(TranslationEngine::deepl));
    texts.settings.write(settings::consentKey(qint64(TranslationEngine::deepl)), true);
    FakeSecretStorage secrets;
    secrets.secrets.insert(u"deeplApiKey"_s, "key");
    const KeychainStore keychain(secrets, u"keys"_s, DiagnosticLine());
    MainQueue queue;
    TranslationClients clients = wire().clients;
    clients.cancelAll = nullptr; // the session goes on serving the other rows
    TranslationManager manager(texts.settings, keychain, texts.manager, queue, clients, {});
    QList<TextBlock> blocks;
    for (const QString &text : screenOf(state.range(0)))
        blocks.append({.text = text, .normBox = {}});
    for (auto _ : state) {
        bool isDone = false;
        manager.translateBlocks(blocks, [&](const Result<BlockTranslations> &result) {
            isDone = true;
            if (!result || result->texts.size() != blocks.size())
                state.SkipWithError("not one translation a block");
        });
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void registerRows()
{
    const auto client = [](const char *name, TranslationEngine engine, const QString &key) {
        benchmark::RegisterBenchmark((std::string("client/") + name).c_str(),
                                     [=](benchmark::State &state) { runClient(state, engine, key); })
            ->Arg(40)
            ->Arg(200)
            ->Arg(2000)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    client("GoogleKeyless", TranslationEngine::free, QString());
    client("GoogleCloud", TranslationEngine::free, u"key"_s);
    client("Microsoft", TranslationEngine::microsoft, u"key"_s);
    client("Gemini", TranslationEngine::customAPI, u"key"_s);
    client("DeepL", TranslationEngine::deepl, u"key"_s);
    client("OpenAI", TranslationEngine::openAI, u"key"_s);
    client("Anthropic", TranslationEngine::anthropic, u"key"_s);
    client("Compatible", TranslationEngine::compatible, u"key"_s);
    benchmark::RegisterBenchmark("manager/DeepL", managedPass)
        ->Arg(40)
        ->Arg(2000)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("tls/kept", [](benchmark::State &state) { securePass(state, true); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("tls/fresh", [](benchmark::State &state) { securePass(state, false); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    registerRows();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
