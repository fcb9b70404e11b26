#include "ManagerOnFakes.h"
#include "TestProgram.h"

#include "Columns.h"
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
    void engines_data()
    {
        // call: what the client gets besides texts and target
        const auto row = columns<int, QString, QString>("engine", "key", "call");
        row("on-device", 0, u""_s, u""_s);
        row("Google, keyless", 1, u""_s, u""_s);
        row("Google with a key", 1, u"k"_s, u" k"_s);
        row("Microsoft", 2, u" k\n"_s, u" k global"_s);
        row("Gemini", 3, u"k"_s, u" k"_s);
        row("DeepL", 4, u"k:fx"_s, u" k:fx"_s);
        row("OpenAI", 5, u"k"_s, u" k gpt-5.6-luna"_s);
        row("Anthropic", 6, u"k"_s, u" k claude-sonnet-4-6"_s);
        row("compatible", 7, u"k"_s, u" k ~openai/gpt-latest https://openrouter.ai/api/v1"_s);
    }

    void engines()
    {
        const auto [engine, key, call] = fetched<int, QString, QString>();
        select(engine, engine != 0, key);
        const QString number = QString::number(engine);
        QCOMPARE(translateBlocks(), number + u" a+b ja"_s + call);
        QVERIFY(!m_isSynchronous);
        QCOMPARE(translateText(u"hello"_s), number + u" hello ja"_s + call + (engine == 0 ? u""_s : u" typed"_s));
        QVERIFY(!m_isSynchronous);
    }

    void refusalsComeInTheirOrder()
    {
        m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
        const auto check = [&](const QString &blocks, const QString &text, bool isSynchronous, bool isCopied) {
            m_copied.clear();
            QCOMPARE(translateBlocks(), blocks);
            QCOMPARE(m_isSynchronous, isSynchronous);
            QCOMPARE(translateText(u"hello"_s), text);
            QCOMPARE(m_isSynchronous, isSynchronous);
            QCOMPARE(m_copied, isCopied ? QStringList{text} : QStringList());
        };
        const QStringList receivers{u"Google"_s, u"Microsoft Azure"_s,  u"Google Gemini"_s,        u"DeepL"_s,
                                    u"OpenAI"_s, u"Anthropic Claude"_s, u"您設定的相容 API 端點"_s};
        const QStringList labels{u"Google"_s, u"Microsoft"_s, u"Gemini"_s,  u"DeepL"_s,
                                 u"OpenAI"_s, u"Claude"_s,    u"相容 API"_s};
        for (int engine = 1; engine < 8; ++engine) {
            select(engine, false, engine % 2 ? QString() : u"k"_s);
            const QString consent =
                u"⚠️ 請先在翻譯設定中允許將文字傳送至 %1。"_s.arg(receivers[engine - 1]);
            check(u"RemoteTranslationConsent 1 "_s + consent, consent, true, false);
            if (engine == 1)
                continue; // needs no key
            select(engine, true, u" \t"_s);
            const QString label = labels[engine - 1];
            const QString sentence = u"請至設定填入 %1 Key"_s.arg(engine == 7   ? label
                                                                  : engine == 2 ? u"Microsoft Azure API"_s
                                                                                : label + u" API"_s);
            check(label + u" -1 "_s + sentence, u"⚠️ "_s + QString(sentence).replace(u"入 相"_s, u"入相"_s), false,
                  engine != 3); // keys are read on a worker
        }
        QVERIFY(m_recorded.isEmpty());
    }

    void typedTextsTarget()
    {
        // One character of the block of Han decides.
        const QStringList han{u"你好"_s, u"これは本です"_s, u"\u4E00"_s, u"\u9FFF"_s};
        const QStringList others{u"hello"_s, u"これです"_s, u"\u4DFF"_s, u"\uA000"_s, u"\U00020BB7"_s};
        for (const int engine : {0, 1, 3, 4}) {
            select(engine, true, engine == 1 ? u""_s : u"k"_s);
            for (const QString &text : han + others) {
                const QString target = han.contains(text) ? u"en-US"_s : u"ja"_s;
                QVERIFY2(translateText(text).contains(u' ' + text + u' ' + target), qPrintable(text));
            }
        }
    }

    void failuresReachTheCaller()
    {
        select(4, true, u"k"_s);
        m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
        QStringList copied;
        const auto check = [&](const auto &thrown, const QString &failure, const QString &sentence) {
            m_outcome = [&]() -> QStringList { throw thrown; };
            QCOMPARE(translateBlocks(), failure + u' ' + sentence);
            copied.append(u"❌ 翻譯失敗："_s + sentence);
            QCOMPARE(translateText(u"hello"_s), copied.last());
            QVERIFY(!m_isSynchronous);
        };
        check(requestFailed(u"DeepL"_s, 456, u"Quota %@"_s), u"TranslationProviderError 456"_s,
              u"DeepL API 錯誤 456：Quota %@"_s);
        check(invalidResponse(u"DeepL"_s), u"TranslationProviderError 0"_s, u"DeepL 回應格式無法解析"_s);
        check(TranslationError(u"Gemini"_s, -1, u"JSON encode error"_s), u"Gemini -1"_s, u"JSON encode error"_s);
        check(std::bad_alloc(), u"Translation -1"_s, u"未知錯誤"_s);
        m_outcome = [] { return QStringList(); }; // no translation at all
        QCOMPARE(translateBlocks() + translateText(u"hello"_s), QString());
        QVERIFY(m_recorded.isEmpty());
        QCOMPARE(m_copied, copied);
    }

    void onDeviceOutcomes()
    {
        m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
        const auto check = [&](const std::optional<QStringList> &outcome, const QString &blocks, const QString &text) {
            m_onDeviceOutcome = [&] { return outcome; };
            m_copied.clear();
            QCOMPARE(translateBlocks(), blocks);
            QCOMPARE(m_isSynchronous, !m_supportsOnDevice);
            QCOMPARE(translateText(u"hello"_s), text);
            QCOMPARE(m_isSynchronous, !m_supportsOnDevice);
            QCOMPARE(m_copied, QStringList{text});
        };
        check(std::nullopt, u"AppleTranslation -1 Apple 翻譯失敗"_s, u"⚠️ Apple 翻譯失敗"_s);
        check(QStringList(), QString(), u"⚠️ Apple 翻譯失敗"_s);
        check(QStringList{u""_s, u"b"_s}, u"|b"_s, u"⚠️ Apple 翻譯失敗"_s);
        m_supportsOnDevice = false;
        const QString tooOld = u"Apple 內建翻譯需升級至 macOS 15"_s;
        check(QStringList{u"x"_s}, u"AppleTranslation -1 "_s + tooOld, u"⚠️ "_s + tooOld);
        QVERIFY(m_recorded.isEmpty());
    }

    void whatIsCopiedAndRecorded()
    {
        select(7, true, u"k"_s);
        const auto check = [&](bool autoCopy, const QString &result, bool isCopied, bool isRecorded) {
            m_texts->settings.overrideForThisProcess(settings::autoCopy, autoCopy);
            m_outcome = [result] { return QStringList{result}; };
            m_copied.clear();
            m_recorded.clear();
            QCOMPARE(translateText(u"hello"_s), result);
            translateBlocks(); // a pass does its own
            QCOMPARE(m_copied, isCopied ? QStringList{result} : QStringList());
            QCOMPARE(m_recorded, isRecorded ? QStringList{u"hello → "_s + result} : QStringList());
        };
        check(true, u"您好"_s, true, true);
        check(false, u"您好"_s, false, true);
        check(true, u""_s, false, false);
        check(true, u"⚠️ 注意"_s, true, false); // a translation that looks like a warning
        check(true, u"⚠ 注意"_s, true, true);         // a sign of another form
    }

    void settingsAreUsedAsStored()
    {
        SettingsStore &store = m_texts->settings;
        store.overrideForThisProcess(settings::openAIModel, u""_s);
        store.overrideForThisProcess(settings::compatibleModel, u" m "_s);
        store.overrideForThisProcess(settings::compatibleBaseURL, u" x "_s);
        store.overrideForThisProcess(settings::microsoftApiRegion, u""_s);
        const qint64 large = (qint64(1) << 32) + 4;
        for (const auto &[engine, blocks] : {std::pair(qint64(5), u"5 a+b ja k"_s),
                                             {7, u"7 a+b ja k  m   x "_s},
                                             {2, u"2 a+b ja k"_s},
                                             {8, u"0 a+b ja"_s},
                                             {-1, u"0 a+b ja"_s},
                                             {large, u"0 a+b ja"_s}}) {
            select(engine, true, u"k"_s);
            QCOMPARE(translateBlocks(), blocks);
        }
    }

    void whatWasTranslatedIsKnown()
    {
        SettingsStore &store = m_texts->settings;
        select(7, true, u"k"_s);
        const auto known = [this] { return m_manager->known(u"a"_s); };
        QVERIFY(!known());
        m_outcome = [] { return QStringList{u"x"_s, u"y"_s}; };
        QVERIFY(m_manager->translate({{u"a"_s, {}}, {u"b"_s, {}}}));
        QCOMPARE(known(), u"x"_s);
        store.overrideForThisProcess(settings::compatibleModel, u"other"_s);
        QVERIFY(!known());
        select(7, false, u"k"_s);
        store.overrideForThisProcess(settings::compatibleModel, settings::compatibleModel.defaultValue.toString());
        QVERIFY2(!known(), "not without consent");
        TranslationCache cache;
        cache.insert(u"e"_s, u"used"_s, u"x"_s);
        const QString large(TranslationCache::mostCharacters / 5, u'x');
        for (int i = 0; i < 20; ++i) {
            cache.insert(u"e"_s, QString::number(i), large);
            QVERIFY(cache.find(u"e"_s, u"used"_s));
        }
        QVERIFY(!cache.find(u"e"_s, u"1"_s) && cache.find(u"e"_s, u"19"_s) && !cache.find(u"f"_s, u"19"_s));
    }

    void eachEngineReadsItsOwnKey()
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
                QVERIFY(translateBlocks().contains(hasKey ? isMoved ? u"legacy"_s : u"k"_s : u"0 a"_s));
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

    void aKeyringThatCannotBeReadSendsNothing()
    {
        using Problem = SecretStorageProblem;
        const QList<std::pair<int, QString>> problems{{int(Problem::Locked), u"鑰匙圈已鎖定"_s},
                                                      {int(Problem::NoAnswer), u"鑰匙圈沒有回應"_s},
                                                      {int(Problem::NoService), u"沒有鑰匙圈服務"_s},
                                                      {int(Problem::NoBus), u"沒有鑰匙圈服務"_s},
                                                      {0, u"鑰匙圈沒有回應"_s}}; // a key that is no text
        m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
        for (int i = 0; i < 35; ++i) {
            const int engine = 1 + i % 7;
            const auto &[problem, sentence] = problems[i / 7];
            const QString account = engineEntry(TranslationEngine(engine)).account;
            m_secrets->lookupFailure.reset();
            m_texts->settings.remove(account);
            select(engine, true, u"k"_s);
            if (problem)
                m_secrets->lookupFailure = Failure{.code = problem};
            else
                m_secrets->secrets[account] = "\xff";
            const QString blocks = translateBlocks();
            QVERIFY2(blocks.startsWith(u"Keychain "_s) && blocks.contains(sentence), qPrintable(blocks));
            const QString text = translateText(u"hello"_s);
            QVERIFY2(text.startsWith(u"⚠️ "_s) && text.contains(sentence), qPrintable(text));
            // A copy of a former version is a key that can be read.
            m_texts->settings.setValue(account, u"legacy"_s);
            QVERIFY(translateBlocks().contains(u"legacy"_s));
        }
        select(0, true, u""_s);
        QCOMPARE(translateBlocks(), u"0 a+b ja"_s);
        QVERIFY(m_copied.isEmpty());
    }

    void noFurtherRequestIsMadeThatMayNotBe()
    {
        m_requestsOfACall = 5;
        int newerTexts = 0;
        const auto newerText = [&] {
            select(0, true, u""_s);
            m_onDeviceOutcome = [] { return QStringList{u"⚠️"_s}; };
            m_texts->settings.overrideForThisProcess(settings::autoCopy, false);
            m_manager->translateText(u"newer"_s, [&](const TextTranslation &) { ++newerTexts; });
        };
        // Consent is withdrawn, or the result isn't wanted any more.
        for (int i = 2; i < 16; ++i) {
            const int engine = i / 2;
            const bool isConsent = i % 2 == 0;
            m_onDeviceOutcome = nullptr;
            m_texts->settings.overrideForThisProcess(settings::autoCopy, true);
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
            const auto blocks = m_manager->translate({}, [&] { return isWanted.load(); });
            QCOMPARE(blocks ? u"none"_s : blocks.error().domain,
                     isConsent ? u"RemoteTranslationConsent"_s : u"HttpSession"_s);
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
            QTRY_COMPARE(newerTexts, i / 2 - (isConsent ? 1 : 0));
            QCOMPARE(requests.load(), 2);
        }
        QVERIFY(m_copied.isEmpty()); // nothing comes of what was cancelled
        QVERIFY(m_recorded.isEmpty());
    }

    void aHangingCallDelaysNoOther()
    {
        std::promise<void> release;
        const std::shared_future<void> released(release.get_future());
        TranslationClients clients = fakeClients();
        clients.remote = [released, remote = clients.remote](const EngineRequest &request, const auto &mayBeSent) {
            if (request.engine != TranslationEngine::deepl)
                return remote(request, mayBeSent);
            released.wait();
            return QStringList{u"late"_s};
        };
        useManagerWith(clients);
        select(4, true, u"k"_s);
        QStringList late;
        for (int i = 0; i < 40; ++i)
            m_manager->translateBlocks({}, [&](const Result<QStringList> &result) { late.append(*result); });
        select(1, true, u""_s);
        QCOMPARE(translateBlocks(), u"1 a+b ja"_s);
        QVERIFY(late.isEmpty());
        release.set_value();
        QTRY_COMPARE(late.size(), 40);
    }

    void anEndedManagerDropsWhatIsLate()
    {
        TranslationClients clients = fakeClients();
        std::promise<void> end;
        clients.onDevice = [ended = std::shared_future<void>(end.get_future())](const auto &, const auto &) {
            ended.wait();
            return OnDeviceTranslations{.texts = {u"late"_s}};
        };
        clients.cancelAll = [&] { end.set_value(); };
        useManagerWith(clients);
        bool isCompleted = false;
        select(0, false, u""_s);
        m_manager->translateText(u"hello"_s, [&](const QString &) { isCompleted = true; });
        m_manager.reset(); // which cancels
        m_queue->drain();
        QVERIFY(!isCompleted);
    }

    void connectionTests()
    {
        QString reply;
        TranslationClients clients = fakeClients();
        clients.remote = [&](const EngineRequest &request, const auto &) {
            return QStringList{QString(reply).replace(u"SENTENCE"_s, request.texts.constFirst())};
        };
        useManagerWith(clients);
        const auto check = [&](const QString &target, const QString &translation, const QString &expected) {
            reply = translation;
            m_texts->settings.overrideForThisProcess(settings::targetLanguageCode, target);
            QStringList outcomes;
            testConnection(*m_manager, m_texts->settings, m_texts->manager, [&](const Result<QString> &result) {
                outcomes.append(result ? *result : result.error().domain + u' ' + result.error().description);
            });
            QTRY_VERIFY(!outcomes.isEmpty());
            QCOMPARE(outcomes.join(u'|'), expected);
        };
        select(4, true, u"k"_s);
        check(u"ja"_s, u" これは \n"_s, u"これは"_s);
        check(u"en-US"_s, u"[SENTENCE]"_s, u"[這是一個連線測試。]"_s);
        check(u"fr"_s, u"[SENTENCE]"_s, u"[This is a connection test.]"_s);
        check(u"ja"_s, QString(200'000, u'x'), QString(300, u'x') + u'…');
        for (const QString &echo : {u"SENTENCE "_s, u"THIS IS A CONNECTION TEST."_s, u" \n"_s})
            check(u"ja"_s, echo, u"TranslationConnectionTest 服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定"_s);
        select(4, false, QString());
        check(u"ja"_s, u"x"_s,
              u"RemoteTranslationConsent ⚠️ 請先在翻譯設定中允許將文字傳送至 DeepL。"_s);
    }

    void theEngineOfThisComputerIsTestedByACommonWord()
    {
        using Kind = OnDeviceOutcome::Kind;
        TranslationClients clients = fakeClients();
        bool knows = true;
        clients.onDevice = [&](const EngineRequest &request, const auto &) {
            QStringList translations = request.texts;
            if (knows)
                translations.last() = u"キャンセル"_s;
            return OnDeviceTranslations{
                .texts = translations,
                .outcomes = QList<OnDeviceOutcome>(translations.size(), {.kind = Kind::UnknownPhrase})};
        };
        useManagerWith(clients);
        select(0, false, u""_s);
        for (const QString &expected :
             {u"キャンセル"_s, u"這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。"_s}) {
            QString outcome;
            testConnection(*m_manager, m_texts->settings, m_texts->manager, [&](const Result<QString> &result) {
                outcome = result ? *result : result.error().description;
            });
            QTRY_COMPARE(outcome, expected);
            knows = false;
        }
    }
};

static const TestClass<TranslationManagerTest> translationManagerTest;
#include "TranslationManagerTest.moc"
