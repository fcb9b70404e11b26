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
QList<TextBlock> screenOf(qsizetype count)
{
    QList<TextBlock> blocks;
    for (qsizetype i = 0; i < count; ++i)
        blocks.append({.text = u"Settings that apply to line %1 of the page"_s.arg(i), .normBox = {}});
    return blocks;
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

using Client = std::function<QStringList(const TranslationClients &, const QList<TextBlock> &)>;

const QString target = u"zh-Hant"_s;
const QString key = u"key"_s;
const auto always = [] {}; // every request may be sent

const std::vector<std::pair<std::string, Client>> &clients()
{
    using Blocks = QList<TextBlock>;
    static const std::vector<std::pair<std::string, Client>> all{
        {"GoogleKeyless", [](const TranslationClients &c, const Blocks &b) { return c.googleFree(always, b, target); }},
        {"GoogleCloud",
         [](const TranslationClients &c, const Blocks &b) { return c.googleCloud(always, b, target, key); }},
        {"Microsoft",
         [](const TranslationClients &c, const Blocks &b) { return c.microsoft(always, b, key, key, target); }},
        {"Gemini", [](const TranslationClients &c, const Blocks &b) { return c.geminiBlocks(always, key, b, target); }},
        {"DeepL", [](const TranslationClients &c, const Blocks &b) { return c.deepL(always, b, key, target); }},
        {"OpenAI",
         [](const TranslationClients &c, const Blocks &b) {
             return c.modelBlocks(always, b, target, OpenAIProvider{key, u"m"_s});
         }},
        {"Anthropic",
         [](const TranslationClients &c, const Blocks &b) {
             return c.modelBlocks(always, b, target, AnthropicProvider{key, u"m"_s});
         }},
        {"Compatible",
         [](const TranslationClients &c, const Blocks &b) {
             return c.modelBlocks(always, b, target,
                                  CompatibleProvider{key, u"m"_s, QString::fromLatin1(wire().plain.origin())});
         }},
    };
    return all;
}

void runClient(benchmark::State &state, const TranslationClients &which, const Client &client)
{
    const QList<TextBlock> blocks = screenOf(state.range(0));
    for (auto _ : state) {
        if (client(which, blocks).size() != blocks.size())
            state.SkipWithError("not one translation a block");
    }
}

/// A pass over TLS whose session knows the server (`isKept`) or has never spoken to it.
void securePass(benchmark::State &state, bool isKept)
{
    const QList<TextBlock> blocks = screenOf(40);
    for (auto _ : state) {
        HttpSession fresh(HttpSession::Options{.certificateFile = certificateFile(u"authority.pem"_s), .proxies = {}});
        const TranslationClients clients =
            isKept ? wire().secureClients : remoteClients(fresh, wire().texts.manager, hostsAt(wire().secure.origin()));
        if (clients.deepL(always, blocks, key, target).size() != blocks.size())
            state.SkipWithError("not one translation a block");
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
    const QList<TextBlock> blocks = screenOf(state.range(0));
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
    for (const auto &[name, client] : clients()) {
        benchmark::RegisterBenchmark(
            ("client/" + name).c_str(),
            [client = client](benchmark::State &state) { runClient(state, wire().clients, client); })
            ->Arg(40)
            ->Arg(200)
            ->Arg(2000)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
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
