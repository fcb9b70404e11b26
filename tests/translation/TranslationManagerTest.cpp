#include "ManagerOnFakes.h"

#include "ConnectionTest.h"
#include "Settings.h"
#include "TranslationError.h"

#include <QSet>
#include <QTest>

#include <atomic>
#include <future>

using namespace lucentra;
using namespace Qt::StringLiterals;

class TranslationManagerTest : public QObject, private ManagerOnFakes
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void engines_data();
    void engines();
    void storedEngines_data();
    void storedEngines();
    void refusalsComeInTheirOrder_data();
    void refusalsComeInTheirOrder();
    void typedTextsTarget_data();
    void typedTextsTarget();
    void failuresReachTheCaller_data();
    void failuresReachTheCaller();
    void onDeviceOutcomes_data();
    void onDeviceOutcomes();
    void whatIsCopiedAndRecorded_data();
    void whatIsCopiedAndRecorded();
    void settingsAreUsedAsStored();
    void eachEngineReadsItsOwnKey();
    void aKeyringThatCannotBeReadSendsNothing_data();
    void aKeyringThatCannotBeReadSendsNothing();
    void noFurtherRequestIsMadeThatMayNotBe_data();
    void noFurtherRequestIsMadeThatMayNotBe();
    void aHangingCallDelaysNoOther();
    void anEndedManagerDropsWhatIsLate();
    void connectionTests_data();
    void connectionTests();
    void theEngineOfThisComputerIsTestedByACommonWord();
};

void TranslationManagerTest::engines_data()
{
    QTest::addColumn<int>("engine");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<QString>("text");
    const QString openAI = u"openAI(k,gpt-5.6-luna)"_s;
    const QString anthropic = u"anthropic(k,claude-sonnet-4-6)"_s;
    const QString compatible = u"compatible(k,~openai/gpt-latest,https://openrouter.ai/api/v1)"_s;
    QTest::newRow("on-device") << 0 << u""_s << u"onDevice a+b ja"_s << u"onDevice hello ja"_s;
    QTest::newRow("Google, keyless") << 1 << u""_s << u"googleFree a+b ja"_s << u"googleFree hello ja"_s;
    QTest::newRow("Google, the key is blank") << 1 << u" \n\t"_s << u"googleFree a+b ja"_s << u"googleFree hello ja"_s;
    QTest::newRow("Google with a key") << 1 << u"k"_s << u"googleCloud a+b ja k"_s << u"googleCloud hello ja k"_s;
    QTest::newRow("Microsoft") << 2 << u" k\n"_s << u"microsoft a+b ja k global"_s << u"microsoft hello ja k global"_s;
    QTest::newRow("Gemini") << 3 << u"k"_s << u"geminiBlocks a+b ja k"_s << u"geminiText hello ja k"_s;
    QTest::newRow("DeepL") << 4 << u"k:fx"_s << u"deepL a+b ja k:fx"_s << u"deepL hello ja k:fx"_s;
    QTest::newRow("OpenAI") << 5 << u"k"_s << u"modelBlocks a+b ja "_s + openAI << u"modelText hello ja "_s + openAI;
    QTest::newRow("Anthropic") << 6 << u"k"_s << u"modelBlocks a+b ja "_s + anthropic
                               << u"modelText hello ja "_s + anthropic;
    QTest::newRow("compatible") << 7 << u"k"_s << u"modelBlocks a+b ja "_s + compatible
                                << u"modelText hello ja "_s + compatible;
}

void TranslationManagerTest::engines()
{
    QFETCH(int, engine);
    QFETCH(QString, key);
    select(engine, engine != 0, key);
    QTEST(translateBlocks(), "blocks");
    QVERIFY(!m_isSynchronous);
    QTEST(translateText(u"hello"_s), "text");
    QVERIFY(!m_isSynchronous);
}

void TranslationManagerTest::storedEngines_data()
{
    QTest::addColumn<qint64>("stored");
    QTest::newRow("one too many") << qint64(8);
    QTest::newRow("negative") << qint64(-1);
    QTest::newRow("large") << (qint64(1) << 32) + 4;
}

void TranslationManagerTest::storedEngines()
{
    QFETCH(qint64, stored);
    m_texts->settings.overrideForThisProcess(settings::translationEngine, stored);
    QCOMPARE(translateBlocks(), u"onDevice a+b ja"_s);
}

void TranslationManagerTest::refusalsComeInTheirOrder_data()
{
    QTest::addColumn<int>("engine");
    QTest::addColumn<bool>("consent");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("copied"); // with "autoCopy" on
    const auto consentRow = [](int engine, const QString &key, const QString &service) {
        const QString message = u"⚠️ 請先在翻譯設定中允許將文字傳送至 %1。"_s.arg(service);
        QTest::addRow("engine %d, no consent, %s key", engine, key.isEmpty() ? "no" : "a")
            << engine << false << key << u"RemoteTranslationConsent 1 "_s + message << message << QString();
    };
    consentRow(1, u""_s, u"Google"_s);
    consentRow(2, u"k"_s, u"Microsoft Azure"_s);
    consentRow(3, u""_s, u"Google Gemini"_s);
    consentRow(4, u"k"_s, u"DeepL"_s);
    consentRow(5, u""_s, u"OpenAI"_s);
    consentRow(6, u"k"_s, u"Anthropic Claude"_s);
    consentRow(7, u""_s, u"您設定的相容 API 端點"_s);
    const auto keyRow = [](int engine, const QString &blocks, const QString &text, bool isCopied) {
        for (const QString &key : {u""_s, u" \t"_s})
            QTest::addRow("engine %d, %s key", engine, key.isEmpty() ? "no" : "a blank")
                << engine << true << key << blocks << text << (isCopied ? text : QString());
    };
    keyRow(2, u"Microsoft -1 請至設定填入 Microsoft Azure API Key"_s,
           u"⚠️ 請至設定填入 Microsoft Azure API Key"_s, true);
    keyRow(3, u"Gemini -1 請至設定填入 Gemini API Key"_s, u"⚠️ 請至設定填入 Gemini API Key"_s, false);
    keyRow(4, u"DeepL -1 請至設定填入 DeepL API Key"_s, u"⚠️ 請至設定填入 DeepL API Key"_s, true);
    keyRow(5, u"OpenAI -1 請至設定填入 OpenAI API Key"_s, u"⚠️ 請至設定填入 OpenAI API Key"_s, true);
    keyRow(6, u"Claude -1 請至設定填入 Claude API Key"_s, u"⚠️ 請至設定填入 Claude API Key"_s, true);
    keyRow(7, u"相容 API -1 請至設定填入 相容 API Key"_s, u"⚠️ 請至設定填入相容 API Key"_s, true);
}

void TranslationManagerTest::refusalsComeInTheirOrder()
{
    QFETCH(int, engine);
    QFETCH(bool, consent);
    QFETCH(QString, key);
    QFETCH(QString, copied);
    m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
    select(engine, consent, key);
    QTEST(translateBlocks(), "blocks");
    QCOMPARE(m_isSynchronous, !consent); // keys are read on a worker
    QTEST(translateText(u"hello"_s), "text");
    QCOMPARE(m_isSynchronous, !consent);
    QCOMPARE(m_copied, copied.isEmpty() ? QStringList() : QStringList{copied});
    QVERIFY(m_recorded.isEmpty());
}

void TranslationManagerTest::typedTextsTarget_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("target");
    QTest::newRow("Latin") << u"hello"_s << u"ja"_s;
    QTest::newRow("Han") << u"你好"_s << u"en-US"_s;
    QTest::newRow("one Han character among kana") << u"これは本です"_s << u"en-US"_s;
    QTest::newRow("kana alone") << u"これです"_s << u"ja"_s;
    QTest::newRow("first of the block") << u"\u4E00"_s << u"en-US"_s;
    QTest::newRow("last of the block") << u"\u9FFF"_s << u"en-US"_s;
    QTest::newRow("before the block") << u"\u4DFF"_s << u"ja"_s;
    QTest::newRow("after the block") << u"\uA000"_s << u"ja"_s;
    QTest::newRow("a supplementary ideograph") << u"\U00020BB7"_s << u"ja"_s;
}

void TranslationManagerTest::typedTextsTarget()
{
    QFETCH(QString, text);
    QFETCH(QString, target);
    for (const int engine : {0, 1, 3, 4}) {
        select(engine, true, engine == 1 ? u""_s : u"k"_s);
        QVERIFY(translateText(text).contains(u' ' + text + u' ' + target));
    }
}

void TranslationManagerTest::failuresReachTheCaller_data()
{
    using Outcome = std::function<QStringList()>;
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const Outcome &outcome, const QString &failure, const QString &sentence) {
        QTest::newRow(name) << outcome << failure + u' ' + sentence << u"❌ 翻譯失敗："_s + sentence;
    };
    row(
        "refused",
        []() -> QStringList { throw TranslationProviderError::requestFailed(u"DeepL"_s, 456, u"Quota %@"_s); },
        u"TranslationProviderError 456"_s, u"DeepL API 錯誤 456：Quota %@"_s);
    row(
        "not understood", []() -> QStringList { throw TranslationProviderError::invalidResponse(u"DeepL"_s); },
        u"TranslationProviderError 0"_s, u"DeepL 回應格式無法解析"_s);
    row(
        "not configured",
        []() -> QStringList { throw TranslationProviderError::invalidConfiguration(u"DeepL API URL 無效"_s); },
        u"TranslationProviderError 0"_s, u"DeepL API URL 無效"_s);
    row(
        "an error of its own", []() -> QStringList { throw ProviderFailure(u"Gemini"_s, -1, u"JSON encode error"_s); },
        u"Gemini -1"_s, u"JSON encode error"_s);
    row(
        "unforeseen", []() -> QStringList { throw std::bad_alloc(); }, u"Translation -1"_s, u"未知錯誤"_s);
    QTest::newRow("no translation at all") << Outcome([] { return QStringList(); }) << u""_s << u""_s;
}

void TranslationManagerTest::failuresReachTheCaller()
{
    QFETCH(std::function<QStringList()>, outcome);
    select(4, true, u"k"_s);
    m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
    m_outcome = outcome;
    QTEST(translateBlocks(), "blocks");
    QTEST(translateText(u"hello"_s), "text");
    QVERIFY(!m_isSynchronous);
    QVERIFY(m_recorded.isEmpty());
    QFETCH(QString, text);
    QCOMPARE(m_copied, text.isEmpty() ? QStringList() : QStringList{text});
}

void TranslationManagerTest::onDeviceOutcomes_data()
{
    using Outcome = std::function<std::optional<QStringList>()>;
    QTest::addColumn<bool>("isSupported");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<QString>("text");
    const QString failed = u"Apple 翻譯失敗"_s;
    const QString tooOld = u"Apple 內建翻譯需升級至 macOS 15"_s;
    QTest::newRow("no result") << true << Outcome([] { return std::nullopt; }) << u"AppleTranslation -1 "_s + failed
                               << u"⚠️ "_s + failed;
    QTest::newRow("an empty list") << true << Outcome([] { return QStringList(); }) << u""_s << u"⚠️ "_s + failed;
    QTest::newRow("an empty text") << true << Outcome([] {
        return QStringList{u""_s, u"b"_s};
    }) << u"|b"_s << u"⚠️ "_s + failed;
    QTest::newRow("an old system") << false << Outcome([] { return QStringList{u"x"_s}; })
                                   << u"AppleTranslation -1 "_s + tooOld << u"⚠️ "_s + tooOld;
}

void TranslationManagerTest::onDeviceOutcomes()
{
    QFETCH(bool, isSupported);
    QFETCH(std::function<std::optional<QStringList>()>, outcome);
    m_supportsOnDevice = isSupported;
    m_onDeviceOutcome = outcome;
    m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
    QTEST(translateBlocks(), "blocks");
    QCOMPARE(m_isSynchronous, !isSupported);
    QTEST(translateText(u"hello"_s), "text");
    QCOMPARE(m_isSynchronous, !isSupported);
    QTEST(m_copied.join(u'|'), "text");
    QVERIFY(m_recorded.isEmpty());
}

void TranslationManagerTest::whatIsCopiedAndRecorded_data()
{
    QTest::addColumn<bool>("autoCopy");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("isCopied");
    QTest::addColumn<bool>("isRecorded");
    QTest::newRow("a translation") << true << u"您好"_s << true << true;
    QTest::newRow("not to be copied") << false << u"您好"_s << false << true;
    QTest::newRow("nothing") << true << u""_s << false << false;
    QTest::newRow("a translation that looks like a warning") << true << u"⚠️ 注意"_s << true << false;
    QTest::newRow("a warning sign of another form") << true << u"⚠ 注意"_s << true << true;
}

void TranslationManagerTest::whatIsCopiedAndRecorded()
{
    QFETCH(bool, autoCopy);
    QFETCH(QString, result);
    QFETCH(bool, isCopied);
    QFETCH(bool, isRecorded);
    m_texts->settings.overrideForThisProcess(settings::autoCopy, autoCopy);
    select(7, true, u"k"_s);
    m_outcome = [result] { return QStringList{result}; };
    QCOMPARE(translateText(u"hello"_s), result);
    QCOMPARE(m_copied, isCopied ? QStringList{result} : QStringList());
    QCOMPARE(m_recorded, isRecorded ? QStringList{u"hello → "_s + result} : QStringList());
    translateBlocks();
    QCOMPARE(m_copied.size() + m_recorded.size(), int(isCopied) + int(isRecorded)); // a pass does its own
}

void TranslationManagerTest::settingsAreUsedAsStored()
{
    SettingsStore &store = m_texts->settings;
    store.overrideForThisProcess(settings::openAIModel, u""_s);
    store.overrideForThisProcess(settings::compatibleModel, u" m "_s);
    store.overrideForThisProcess(settings::compatibleBaseURL, u" x "_s);
    store.overrideForThisProcess(settings::microsoftApiRegion, u""_s);
    select(5, true, u"k"_s);
    QCOMPARE(translateBlocks(), u"modelBlocks a+b ja openAI(k,)"_s);
    select(7, true, u"k"_s);
    QCOMPARE(translateBlocks(), u"modelBlocks a+b ja compatible(k, m , x )"_s);
    select(2, true, u"k"_s);
    QCOMPARE(translateBlocks(), u"microsoft a+b ja k "_s);
}

void TranslationManagerTest::eachEngineReadsItsOwnKey()
{
    for (const EngineEntry &entry : engineCatalogue()) {
        const QString account = entry.account;
        const bool hasKey = !account.isEmpty();
        for (const bool isMoved : {true, false}) {
            m_secrets->secrets.clear();
            m_secrets->lookups.clear();
            if (hasKey && isMoved)
                m_texts->settings.setValue(account, u"legacy"_s);
            select(qint64(entry.engine), true, hasKey && !isMoved ? u"k"_s : QString());
            QVERIFY(translateBlocks().contains(hasKey ? isMoved ? u"legacy"_s : u"k"_s : u"onDevice"_s));
            QVERIFY(!translateText(u"hello"_s).startsWith(u"⚠️"_s));
            QCOMPARE(QSet<QString>(m_secrets->lookups.begin(), m_secrets->lookups.end()),
                     hasKey ? QSet<QString>{account} : QSet<QString>());
            QVERIFY(!m_texts->settings.contains(account));
        }
    }
    // Plaintext copies of a former version are moved by the first request of any engine.
    m_secrets->secrets.clear();
    for (const qint64 engine : {0, 1}) {
        m_texts->settings.setValue(u"deeplApiKey"_s, u"legacy"_s);
        select(engine, true, QString());
        translateBlocks();
        QTRY_VERIFY(!m_texts->settings.contains(u"deeplApiKey"_s));
    }
    QCOMPARE(m_secrets->secrets.value(u"deeplApiKey"_s), "legacy");
}

void TranslationManagerTest::aKeyringThatCannotBeReadSendsNothing_data()
{
    QTest::addColumn<int>("problem");
    QTest::addColumn<QString>("sentence");
    using Problem = SecretStorageProblem;
    QTest::newRow("locked") << int(Problem::Locked) << u"鑰匙圈已鎖定"_s;
    QTest::newRow("silent or slow") << int(Problem::NoAnswer) << u"鑰匙圈沒有回應"_s;
    QTest::newRow("absent") << int(Problem::NoService) << u"沒有鑰匙圈服務"_s;
    QTest::newRow("no bus") << int(Problem::NoBus) << u"沒有鑰匙圈服務"_s;
    QTest::newRow("a key that is no text") << 0 << u"鑰匙圈沒有回應"_s;
}

void TranslationManagerTest::aKeyringThatCannotBeReadSendsNothing()
{
    QFETCH(int, problem);
    QFETCH(QString, sentence);
    m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
    for (int engine = 1; engine < 8; ++engine) {
        select(engine, true, u"k"_s);
        if (problem)
            m_secrets->lookupFailure = Failure{.code = problem};
        else
            m_secrets->secrets[engineEntry(TranslationEngine(engine)).account] = "\xff";
        const QString blocks = translateBlocks();
        QVERIFY2(blocks.startsWith(u"Keychain "_s) && blocks.contains(sentence), qPrintable(blocks));
        const QString text = translateText(u"hello"_s);
        QVERIFY2(text.startsWith(u"⚠️ "_s) && text.contains(sentence), qPrintable(text));
        // A copy of a former version is a key that can be read.
        m_texts->settings.setValue(engineEntry(TranslationEngine(engine)).account, u"legacy"_s);
        QVERIFY(translateBlocks().contains(u"legacy"_s));
    }
    select(0, true, u""_s);
    QCOMPARE(translateBlocks(), u"onDevice a+b ja"_s);
    QVERIFY(m_copied.isEmpty());
}

void TranslationManagerTest::noFurtherRequestIsMadeThatMayNotBe_data()
{
    QTest::addColumn<QString>("reason");
    QTest::newRow("consent withdrawn") << u"consent"_s;
    QTest::newRow("superseded") << u"superseded"_s;
}

void TranslationManagerTest::noFurtherRequestIsMadeThatMayNotBe()
{
    QFETCH(QString, reason);
    const bool isConsent = reason == u"consent";
    m_requestsOfACall = 5;
    m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
    const auto newerText = [&] {
        select(0, true, u""_s);
        m_onDeviceOutcome = [] { return QStringList{u"⚠️"_s}; };
        m_texts->settings.overrideForThisProcess(settings::autoCopy, false);
        m_manager->translateText(u"newer"_s, [](const TextTranslation &) {});
    };
    for (int engine = 1; engine < 8; ++engine) {
        select(engine, true, u"k"_s);
        std::atomic<int> requests = 0;
        std::atomic<bool> isWanted = true;
        onRequest = [&] {
            if (++requests != 2)
                return;
            if (isConsent)
                select(engine, false, u""_s);
            else
                isWanted = false;
        };
        QString failure;
        m_manager->translateBlocks(
            {}, [&](const Result<QStringList> &result) { failure = result ? u"none"_s : result.error().domain; },
            [&] { return isWanted.load(); });
        QTRY_COMPARE(failure, isConsent ? u"RemoteTranslationConsent"_s : u"HttpSession"_s);
        QCOMPARE(requests.load(), 2);

        select(engine, true, u"k"_s);
        requests = 0;
        onRequest = [&] {
            if (++requests == 2 && isConsent)
                select(engine, false, u""_s);
            else if (requests == 2)
                QMetaObject::invokeMethod(this, newerText, Qt::BlockingQueuedConnection);
        };
        const QString text = translateText(u"hello"_s);
        QCOMPARE(text.startsWith(u"⚠️ 請先在翻譯設定中允許"_s), isConsent);
        QCOMPARE(text.isEmpty(), !isConsent);
        QCOMPARE(requests.load(), 2);
    }
    QVERIFY(m_copied.isEmpty()); // nothing comes of what was cancelled
    QVERIFY(m_recorded.isEmpty());
}

void TranslationManagerTest::aHangingCallDelaysNoOther()
{
    std::promise<void> release;
    const std::shared_future<void> released(release.get_future());
    TranslationClients clients = fakeClients();
    clients.deepL = [released](const BeforeRequest &, const TranslationClients::Blocks &, const QString &,
                               const QString &) {
        released.wait();
        return QStringList{u"late"_s};
    };
    useManagerWith(clients);
    select(4, true, u"k"_s);
    QStringList late;
    for (int i = 0; i < 40; ++i)
        m_manager->translateBlocks({}, [&](const Result<QStringList> &result) { late.append(*result); });
    select(1, true, u""_s);
    QCOMPARE(translateBlocks(), u"googleFree a+b ja"_s);
    QVERIFY(late.isEmpty());
    release.set_value();
    QTRY_COMPARE(late.size(), 40);
}

void TranslationManagerTest::anEndedManagerDropsWhatIsLate()
{
    select(4, true, u"k"_s);
    std::function<void(std::optional<OnDeviceTranslations>)> late;
    bool isCancelled = false;
    TranslationClients clients = fakeClients();
    clients.onDevice = [&](const QStringList &, const QString &, const auto &completion, const auto &) {
        late = completion;
    };
    clients.cancelAll = [&] { isCancelled = true; };
    useManagerWith(clients);
    bool isCompleted = false;
    select(0, false, u""_s);
    m_manager->translateText(u"hello"_s, [&](const QString &) { isCompleted = true; });
    m_manager.reset();
    QVERIFY(isCancelled);
    late(OnDeviceTranslations{.texts = {u"late"_s}});
    m_queue->drain();
    QVERIFY(!isCompleted);
}

void TranslationManagerTest::connectionTests_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("consent");
    QTest::addColumn<QString>("reply"); // SENTENCE stands for what was sent
    QTest::addColumn<QString>("outcome");
    const QString echoed = u"TranslationConnectionTest 服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定"_s;
    QTest::newRow("translated") << u"ja"_s << true << u" これは \n"_s << u"これは"_s;
    QTest::newRow("sent to English") << u"en"_s << true << u"[SENTENCE]"_s << u"[這是一個連線測試。]"_s;
    QTest::newRow("sent to American English") << u"en-US"_s << true << u"[SENTENCE]"_s << u"[這是一個連線測試。]"_s;
    QTest::newRow("sent to any other") << u"fr"_s << true << u"[SENTENCE]"_s << u"[This is a connection test.]"_s;
    QTest::newRow("echoed") << u"ja"_s << true << u"SENTENCE "_s << echoed;
    QTest::newRow("echoed in capitals") << u"ja"_s << true << u"THIS IS A CONNECTION TEST."_s << echoed;
    QTest::newRow("endless") << u"ja"_s << true << QString(200'000, u'x') << QString(300, u'x') + u'…';
    QTest::newRow("blank") << u"ja"_s << true << u" \n"_s << echoed;
    QTest::newRow("no consent")
        << u"ja"_s << false << u"x"_s
        << u"RemoteTranslationConsent ⚠️ 請先在翻譯設定中允許將文字傳送至 DeepL。"_s;
}

void TranslationManagerTest::connectionTests()
{
    QFETCH(QString, target);
    QFETCH(bool, consent);
    QFETCH(QString, reply);
    m_texts->settings.overrideForThisProcess(settings::targetLanguageCode, target);
    TranslationClients clients = fakeClients();
    clients.deepL = [&](const BeforeRequest &, const TranslationClients::Blocks &blocks, const QString &,
                        const QString &) {
        return QStringList{QString(reply).replace(u"SENTENCE"_s, blocks.constFirst().text)};
    };
    useManagerWith(clients);
    select(4, consent, u"k"_s);
    QStringList outcomes;
    testConnection(*m_manager, m_texts->settings, m_texts->manager, [&](const Result<QString> &result) {
        outcomes.append(result ? *result : result.error().domain + u' ' + result.error().description);
    });
    QTRY_VERIFY(!outcomes.isEmpty());
    QTEST(outcomes.join(u'|'), "outcome");
}

void TranslationManagerTest::theEngineOfThisComputerIsTestedByACommonWord()
{
    using Kind = OnDeviceOutcome::Kind;
    TranslationClients clients = fakeClients();
    bool knows = true;
    clients.onDevice = [&](const QStringList &texts, const QString &, const auto &completion, const auto &) {
        QStringList translations = texts;
        if (knows)
            translations.last() = u"キャンセル"_s;
        completion(OnDeviceTranslations{
            .texts = translations, .outcomes = QList<OnDeviceOutcome>(texts.size(), {.kind = Kind::UnknownPhrase})});
    };
    useManagerWith(clients);
    select(0, false, u""_s);
    for (const QString &expected : {u"キャンセル"_s, u"這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。"_s}) {
        QString outcome;
        testConnection(*m_manager, m_texts->settings, m_texts->manager,
                       [&](const Result<QString> &result) { outcome = result ? *result : result.error().description; });
        QTRY_COMPARE(outcome, expected);
        knows = false;
    }
}

QTEST_GUILESS_MAIN(TranslationManagerTest)
#include "TranslationManagerTest.moc"
