#include "CalledServices.h"
#include "TestProgram.h"
#include "TranslationError.h"

#include "Columns.h"
#include "EngineClients.h"
#include "ServiceResponder.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

#include <QTest>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

QStringList numberedTexts(int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(u"line %1"_s.arg(i));
    return texts;
}

QString invalidAnswerOf(Service service)
{
    return service == Service::Gemini ? u"Response parse error"_s : labelOf(service) + u" 回應格式無法解析"_s;
}

/// Every text is its own translation.
QueuedAnswer asTheService(const ReceivedRequest &request)
{
    return answerAsService(request, [](const QString &text) { return text; });
}

} // namespace

class WebClientsTest : public QObject, private CalledServices
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void requestsOnTheWire_data()
    {
        // headers: all but those of the connection itself
        const auto row = columns<Service, QByteArray, QByteArray, QStringList, QByteArray>("service", "method",
                                                                                           "target", "headers", "body");
        row("Google keyless", Service::GoogleFree, "GET",
            QByteArray("/translate_a/single?client=gtx&sl=auto&tl=zh-TW&dt=t&q="
                       "Open%20file%7C%7C%7C%7CSave"),
            {u"User-Agent: Mozilla/5.0"_s}, {});
        row("Google Cloud", Service::GoogleCloud, "POST", "/language/translate/v2?key=k3y-4711",
            {u"Content-Type: application/json"_s},
            QByteArray(R"({"format":"text","q":["Open file","Save"],"target":"zh-TW"})"));
        row("DeepL", Service::DeepL, "POST", "/v2/translate",
            {u"Content-Type: application/json"_s, u"Authorization: DeepL-Auth-Key k3y-4711"_s},
            QByteArray(R"({"model_type":"prefer_quality_optimized","preserve_formatting":true,)"
                       R"("target_lang":"ZH-HANT","text":["Open file","Save"]})"));
        row("Microsoft, whose region is empty", Service::Microsoft, "POST", "/translate?api-version=3.0&to=zh-Hant",
            {u"Content-Type: application/json"_s, u"Ocp-Apim-Subscription-Key: k3y-4711"_s,
             u"Ocp-Apim-Subscription-Region: "_s},
            QByteArray(R"([{"text":"Open file"},{"text":"Save"}])"));
    }

    void requestsOnTheWire()
    {
        QFETCH(Service, service);
        m_server.respondWith([](const ReceivedRequest &request) {
            return answerAsService(request, [](const QString &text) { return u" «%1»\n"_s.arg(text); });
        });
        const QStringList translations = translate(service, {u"Open file"_s, u"Save"_s});
        if (service == Service::GoogleFree)
            QCOMPARE(translations, (QStringList{u"«Open file»"_s, u"«Save»"_s})); // the one that trims
        else
            QCOMPARE(translations, (QStringList{u" «Open file»\n"_s, u" «Save»\n"_s}));
        const ReceivedRequest request = m_server.requests().constFirst();
        QTEST(request.method, "method");
        QTEST(request.target, "target");
        QTEST(request.body, "body");
        QStringList headers = headersOf(request);
        QTEST(headers, "headers");
    }

    void theKeySelectsDeepLsHost()
    {
        m_server.respondWith(asTheService);
        ServiceHosts hosts = hostsAt(m_server.origin());
        hosts.deepL = "none";
        const TranslationClients all = std::exchange(m_clients, remoteClients(m_session, m_texts.manager, hosts));
        QCOMPARE(translate(Service::DeepL, {u"a"_s}, u"ja"_s, u"abc:fx"_s), QStringList{u"a"_s});
        QCOMPARE(failureOf(Service::DeepL, {u"a"_s}, u"ja"_s, u"abc:fx0"_s), u"DeepL API URL 無效"_s);
        m_clients = all;
    }

    void targetCodes()
    {
        const QStringList expected{u"zh-Hant zh-TW ZH-HANT zh-Hant 繁體中文 (Traditional Chinese)"_s,
                                   u"zh-Hans zh-CN ZH-HANS zh-Hans 簡體中文 (Simplified Chinese)"_s,
                                   u"en-US en EN-US en 英文 (English)"_s,
                                   u"en en EN-US en 英文 (English)"_s,
                                   u"ja ja JA ja 日文 (Japanese)"_s,
                                   u"ko ko KO ko 韓文 (Korean)"_s,
                                   u"fr fr FR fr 繁體中文 (Traditional Chinese)"_s};
        for (const QString &line : expected) {
            const QString code = line.section(u' ', 0, 0);
            QCOMPARE(u"%1 %2 %3 %4 %5"_s.arg(code, googleLanguageCode(code), deepLLanguageCode(code),
                                             microsoftLanguageCode(code), dictionaryLanguageName(code)),
                     line);
            QVERIFY(dictionaryLanguageName(code).startsWith(promptLanguageName(code) + u' '));
        }
    }

    void textsArriveWhole()
    {
        m_server.respondWith(asTheService);
        for (const QString &text : {u"a&b=c+d#e;f%26?g"_s, u"a b\tc\nd"_s, u"https://user@example.org:8443/x?y=1&z=2"_s,
                                    u"螢幕 é 👍🇹🇼 ~'()*!$,"_s, u"\"C:\\dir\\\" <b>[x]{y}^`|."_s, u""_s}) {
            for (const Service service : engines) {
                QCOMPARE(translate(service, {text, u"x"_s}), (QStringList{text, u"x"_s}));
                QCOMPARE(textsIn(m_server.requests().constLast()), (QStringList{text, u"x"_s}));
            }
        }
        // What the keyless service's texts are separated by may be in them.
        const QStringList texts{u"a"_s, u"b|"_s, u"c"_s, u"d||||e"_s, u"||||"_s, u"f"_s, u"g"_s};
        QCOMPARE(translate(Service::GoogleFree, texts), texts);
    }

    void blocksAreSentInChunks()
    {
        m_server.respondWith(asTheService);
        const auto check = [&](Service service, int count, const QList<int> &expected) {
            m_server.reset();
            QCOMPARE(translate(service, numberedTexts(count)), numberedTexts(count));
            QList<int> sizes;
            for (const ReceivedRequest &request : m_server.requests())
                sizes.append(int(textsIn(request).size()));
            std::sort(sizes.rbegin(), sizes.rend()); // those of one wave arrive in any order
            QCOMPARE(sizes, expected);
        };
        check(Service::GoogleFree, 0, {});
        check(Service::GoogleFree, 6, {6});
        check(Service::GoogleFree, 7, {6, 1});
        check(Service::GoogleFree, 19, {6, 6, 6, 1});
        check(Service::GoogleCloud, 0, {});
        check(Service::GoogleCloud, 128, {128});
        check(Service::GoogleCloud, 129, {128, 1});
        check(Service::DeepL, 0, {0});
        check(Service::DeepL, 129, {50, 50, 29});
        check(Service::Microsoft, 0, {});
        check(Service::Microsoft, 101, {100, 1});
    }

    void noRequestIsAboveTheServicesLimits()
    {
        m_server.respondWith(asTheService);
        // Control characters are six bytes each in JSON, ideographs three.
        for (const QString &text : {u"字"_s.repeated(8000), u"\u0001"_s.repeated(8000), u"a"_s.repeated(30'000)}) {
            const QStringList texts(20, text);
            for (const Service service : {Service::GoogleCloud, Service::DeepL, Service::Microsoft})
                QVERIFY(translate(service, texts) == texts);
        }
    }

    void wavesFollowEachOther()
    {
        // Of the first wave, one answer comes at once and two come late; had a fourth request not waited for all three,
        // it would have come in between.
        m_server.respondWith([](const ReceivedRequest &request) {
            QueuedAnswer answer = asTheService(request);
            answer.afterRequests = 3;
            answer.delay = textsIn(request).startsWith(u"line 0"_s) ? 0ms : 100ms;
            return answer;
        });
        QCOMPARE(translate(Service::GoogleFree, numberedTexts(19)), numberedTexts(19));
        const auto requests = m_server.requests();
        QCOMPARE(requests.size(), 4);
        QCOMPARE(requests[2].unansweredThen, 3);
        QCOMPARE(requests[3].answersBefore, 3);
    }

    void answersOfAnotherForm_data()
    {
        // body: for the texts "one" and "two"
        // expected: empty: an invalid response
        columns<Service, QByteArray, QStringList>("service", "body", "expected");
        const auto row = [](Service service, const QByteArray &name, const QByteArray &body,
                            const QStringList &expected = {}) {
            QTest::addRow("%s: %s", labelOf(service).toUtf8().constData(), name.constData())
                << service << body << expected;
        };
        const QList<QByteArray> noAnswers{"",
                                          "Too many requests",
                                          "<!DOCTYPE html><html></html>",
                                          "null",
                                          "{}",
                                          "[]",
                                          "{\"translations\":[{\"text\":\"一\"},{\"te",
                                          QByteArray(100'000, '[') + QByteArray(100'000, ']'),
                                          "[[[\"\xe4\xb8||||b\"]]]",
                                          QByteArray("[[[\"a\0||||b\"]]]", 16)};
        for (const Service service : engines) {
            for (qsizetype i = 0; i < noAnswers.size(); ++i)
                row(service, QByteArray::number(i), noAnswers[i]);
        }
        row(Service::GoogleFree, "a piece too few", R"([[["一"]]])");
        row(Service::GoogleFree, "a piece too many", R"([[["一||||二||||三"]]])");
        row(Service::GoogleFree, "the first element is no array", R"([{"0":["一||||二"]}])");
        row(Service::GoogleFree, "numbers and nulls are skipped",
            R"([[[5],["一||"],[null,"x"],[],["||二"]],null,"en"])", {u"一"_s, u"二"_s});
        row(Service::GoogleCloud, "one too few", R"({"data":{"translations":[{"translatedText":"一"}]}})");
        row(Service::GoogleCloud, "a number for a text",
            R"({"data":{"translations":[{"translatedText":"一"},{"translatedText":2}]}})");
        row(Service::GoogleCloud, "data is no object", R"({"data":[{"translatedText":"一"},{"translatedText":"二"}]})");
        row(Service::GoogleCloud, "more than asked for",
            R"({"data":{"translations":[{"translatedText":"一"},{"translatedText":"二"},{}]}})");
        row(Service::DeepL, "one too many", R"({"translations":[{"text":"一"},{"text":"二"},{"text":"三"}]})");
        row(Service::DeepL, "an element without text", R"({"translations":[{"text":"一"},{"detected":"EN"}]})",
            {u"一"_s, u"two"_s});
        row(Service::DeepL, "more arrays than memory should hold",
            R"({"translations":[{"text":"一"},{"text":"二"}],"x":[[])" + QByteArray(",[]").repeated(1'000'000) + "]}");
        row(Service::DeepL, "a number and a null", R"({"translations":[{"text":1},null]})", {u"one"_s, u"two"_s});
        row(Service::Microsoft, "one too few", R"([{"translations":[{"text":"一"}]}])");
        row(Service::Microsoft, "no translation", R"([{"translations":[{"text":"一"}]},{"translations":[]}])");
        row(Service::Microsoft, "a null", R"([{"translations":[{"text":"一"}]},{"translations":[{"text":null}]}])");
        row(Service::Microsoft, "only the first counts",
            R"([{"translations":[{"text":"一"},{"text":"x"}]},{"translations":[{"text":"二"}]}])", {u"一"_s, u"二"_s});
    }

    void answersOfAnotherForm()
    {
        const auto [service, body, expected] = fetched<Service, QByteArray, QStringList>();
        m_server.enqueue(QueuedAnswer::json(body));
        if (expected.isEmpty()) {
            QCOMPARE(failureOf(service, {u"one"_s, u"two"_s}), invalidAnswerOf(service));
        } else {
            QCOMPARE(translate(service, {u"one"_s, u"two"_s}), expected);
        }
    }

    void refusals()
    {
        const QByteArray half = "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf";
        for (const Service service : engines) {
            const QString refused = labelBeforeAPI(labelOf(service)) + u" API 錯誤 "_s;
            const QList<std::pair<QueuedAnswer, QString>> answers{
                {QueuedAnswer::reply(429, R"({"error":{"message":"Slow down"}})"), refused + u"429：Slow down"_s},
                {QueuedAnswer::reply(302, "moved", {{"Location", "https://elsewhere.example/"}}),
                 refused + u"302：moved"_s},
                {QueuedAnswer::reply(503, ""),
                 refused + u"503："_s + (service == Service::Gemini ? u"未知錯誤"_s : u""_s)},
                {QueuedAnswer::raw(half), u"與伺服器的連線已中斷"_s}};
            m_server.reset();
            for (const auto &[answer, failure] : answers) {
                m_server.enqueue(answer);
                QCOMPARE(failureOf(service, {u"text"_s}), failure);
            }
            QCOMPARE(m_server.requests().size(), answers.size()); // nothing is tried again
        }
    }

    void theFirstFailureEndsTheCall()
    {
        for (const Service service : engines) {
            m_server.reset();
            const int requests = service == Service::GoogleFree ? 3 : 1; // of the first wave
            m_server.respondWith([requests](const ReceivedRequest &) {
                QueuedAnswer answer = QueuedAnswer::reply(429, R"({"message":"Slow down"})");
                answer.afterRequests = requests;
                return answer;
            });
            QVERIFY(failureOf(service, numberedTexts(2000)).endsWith(u" API 錯誤 429：Slow down"_s));
            QCOMPARE(m_server.requests().size(), requests);
        }
    }

    void consentWithdrawnDuringACall()
    {
        for (const Service service : engines) {
            m_server.reset();
            m_server.respondWith(asTheService);
            int asked = 0;
            m_beforeRequest = [&asked] {
                if (++asked > 1)
                    throw TranslationError(u"RemoteTranslationConsent"_s, 1, u"withdrawn"_s);
            };
            QCOMPARE(failureOf(service, numberedTexts(2000)), u"withdrawn"_s);
            QCOMPARE(m_server.requests().size(), service == Service::GoogleFree ? 3 : 1); // its first wave
        }
        m_beforeRequest = {};
    }

    void valuesThatCannotBeSent()
    {
        const QString lines = u"k3y-4711\r\nX-Injected: 1"_s;
        for (const Service service : engines) {
            if (service == Service::GoogleFree)
                continue; // has no key
            const QString failure = service == Service::GoogleCloud ? u"Google Cloud API URL 無效"_s
                                    : service == Service::Gemini    ? u"Request prepare error"_s
                                                                    : u"API Key 或設定含有無法傳送的字元"_s;
            QCOMPARE(failureOf(service, {u"text"_s}, u"ja"_s, lines), failure);
        }
        QCOMPARE(translateText(Service::Gemini, u"t"_s, lines), u"❌ 網路請求準備失敗"_s);
        QCOMPARE(failureOf(Service::GoogleCloud, {u"t"_s}, u"ja"_s, u"a\u3000b"_s), u"Google Cloud API URL 無效"_s);
        QCOMPARE(failureOf(Service::Microsoft, {u"t"_s}, u"x y"_s), u"Microsoft Translator API URL 無效"_s);
        QCOMPARE(failureOf(Service::GoogleFree, {u"t"_s}, u"x y"_s), u"Google 免費翻譯 回應格式無法解析"_s);
        QVERIFY(m_server.requests().isEmpty());
    }

    void messagesOfErrors()
    {
        const auto message = [&](const QByteArray &body) {
            return providerErrorMessage(body, {u"k3y-4711"_s, u"x"_s}, m_texts.manager);
        };
        const QString hint = u"請檢查 API Key、模型名稱與服務設定"_s;
        QCOMPARE(message(R"({"error":{"message":"Nested"},"message":"Top"})"), u"Nested"_s);
        QCOMPARE(message(R"({"error":"code","message":"Top"})"), u"Top"_s);
        QCOMPARE(message("{\"message\":\"" + QByteArray(5'000'000, 'x') + "\"}"), QString(4000, u'x'));
        QCOMPARE(message(R"({"error":{"message":5}})"), hint);
        QCOMPARE(message(R"([{"error":{"message":"x"}}])"), uR"([{"error":{"message":"x"}}])"_s);
        QCOMPARE(message("<html>" + QByteArray(2000, 'x')), u"<html>"_s + QString(294, u'x'));
        // Characters are what readers see, whole ones.
        QCOMPARE(message(u"👨‍👩‍👧"_s.repeated(400).toUtf8()), u"👨‍👩‍👧"_s.repeated(300));
        QCOMPARE(message("{\"message\":\"x" + u"😀"_s.repeated(2000).toUtf8() + "\"}"), u"x"_s + u"😀"_s.repeated(1999));
        // The whole word that holds a key goes.
        QCOMPARE(message(R"({"message":"max_k3y-4711_tokens, max"})"), u"•••, max"_s);
        QCOMPARE(message({}), u""_s);
        QCOMPARE(message("\xff\xfe"), u"未知錯誤"_s);
    }

    void theKeyIsInNoMessage()
    {
        const QList<QByteArray> bodies{R"({"error":{"message":"Bad key sk/Secret+1."}})",
                                       R"({"message":"Bad key sk\/Secret\u002b1."})",
                                       "[{\"reason\":\"sk\\/Secret\\u002B1\"},{\"cause\":\"{\\\"key\\\":\\\"sk\\\\/"
                                       "Secret\\\\u002b1\\\"}\"}]", // within plain text
                                       "<b>sk&#x2F;Secret&#43;1</b> sk/Secret&#x02b;1 &#115;k/&#83;ecret+1",
                                       "GET /v2?key=sk%2fSecret%2b1 %73k/%53ecret+1 sk%2FSecret%2B1 failed",
                                       QByteArray(296, 'x') + "sk/Secret+1"}; // cut by the limit of 300
        for (const Service service : engines) {
            if (service == Service::GoogleFree)
                continue; // has none
            for (const QByteArray &body : bodies) {
                m_server.enqueue(QueuedAnswer::reply(401, body));
                const QString failure = failureOf(service, {u"text"_s}, u"ja"_s, u"sk/Secret+1"_s);
                QVERIFY(failure.contains(u"API 錯誤 401"_s));
                QVERIFY2(!failure.contains(u"Sec"_s) && !failure.contains(u"sk/"_s), qPrintable(failure));
            }
        }
    }
};

static const TestClass<WebClientsTest> webClientsTest;
#include "WebClientsTest.moc"
