#include "CalledServices.h"

#include "AnthropicClient.h"
#include "CompatibleClient.h"
#include "DeepLClient.h"
#include "GeminiClient.h"
#include "GoogleCloudClient.h"
#include "GoogleFreeClient.h"
#include "MicrosoftClient.h"
#include "OpenAIClient.h"
#include "ServiceResponder.h"
#include "TargetLanguage.h"

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

} // namespace

class WebClientsTest : public QObject, private CalledServices
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void requestsOnTheWire_data();
    void requestsOnTheWire();
    void everyServiceHasItsTimeOut();
    void theKeySelectsDeepLsHost();
    void targetCodes_data();
    void targetCodes();
    void textsArriveWhole_data();
    void textsArriveWhole();
    void blocksAreSentInChunks_data();
    void blocksAreSentInChunks();
    void noRequestIsAboveTheServicesLimits();
    void separatorsWithinTextsAreTheirOwn();
    void wavesFollowEachOther();
    void answersOfAnotherForm_data();
    void answersOfAnotherForm();
    void refusals_data();
    void refusals();
    void theFirstFailureEndsTheCall_data();
    void theFirstFailureEndsTheCall();
    void valuesThatMakeNoUrl_data();
    void valuesThatMakeNoUrl();
    void messagesOfErrors_data();
    void messagesOfErrors();
    void theKeyIsInNoMessage_data();
    void theKeyIsInNoMessage();
};

void WebClientsTest::requestsOnTheWire_data()
{
    QTest::addColumn<Service>("service");
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QStringList>("headers"); // all but those of the connection itself
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("Google keyless") << Service::GoogleFree << QByteArray("GET")
                                    << QByteArray("/translate_a/single?client=gtx&sl=auto&tl=zh-TW&dt=t&q="
                                                  "Open%20file%7C%7C%7C%7CSave")
                                    << QStringList{u"User-Agent: Mozilla/5.0"_s} << QByteArray();
    QTest::newRow("Google Cloud") << Service::GoogleCloud << QByteArray("POST")
                                  << QByteArray("/language/translate/v2?key=k3y-4711")
                                  << QStringList{u"Content-Type: application/json"_s}
                                  << QByteArray(R"({"format":"text","q":["Open file","Save"],"target":"zh-TW"})");
    QTest::newRow("DeepL") << Service::DeepL << QByteArray("POST") << QByteArray("/v2/translate")
                           << QStringList{u"Content-Type: application/json"_s,
                                          u"Authorization: DeepL-Auth-Key k3y-4711"_s}
                           << QByteArray(R"({"model_type":"prefer_quality_optimized","preserve_formatting":true,)"
                                         R"("target_lang":"ZH-HANT","text":["Open file","Save"]})");
    QTest::newRow("Microsoft, whose region is empty")
        << Service::Microsoft << QByteArray("POST") << QByteArray("/translate?api-version=3.0&to=zh-Hant")
        << QStringList{u"Content-Type: application/json"_s, u"Ocp-Apim-Subscription-Key: k3y-4711"_s,
                       u"Ocp-Apim-Subscription-Region: "_s}
        << QByteArray(R"([{"text":"Open file"},{"text":"Save"}])");
}

void WebClientsTest::requestsOnTheWire()
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

void WebClientsTest::everyServiceHasItsTimeOut()
{
    const ServiceHosts hosts;
    const ModelMessage message{.instruction = u"i"_s, .userText = u"u"_s};
    QCOMPARE(googleFreeRequest(hosts, {u"t"_s}, u"ja"_s)->http.timeout, 15s);
    QCOMPARE(googleCloudRequest(hosts, {u"t"_s}, u"ja"_s, u"k"_s).http.timeout, 20s);
    QCOMPARE(microsoftRequest(hosts, {u"t"_s}, u"k"_s, u"r"_s, u"ja"_s).http.timeout, 20s);
    QCOMPARE(deepLRequest(hosts, {u"t"_s}, u"k"_s, u"ja"_s).http.timeout, 45s);
    QCOMPARE(openAIRequest(hosts, {}, message).http.timeout, 45s);
    QCOMPARE(anthropicRequest(hosts, {}, message).http.timeout, 45s);
    QCOMPARE(compatibleRequest({.baseUrl = u"https://ai.example"_s}, message).http.timeout, 45s);
    QCOMPARE(geminiRequest(hosts, u"k"_s, message)->http.timeout, 30s);
}

void WebClientsTest::theKeySelectsDeepLsHost()
{
    const ServiceHosts hosts;
    QCOMPARE(deepLRequest(hosts, {}, u"abc:fx"_s, u"ja"_s).http.url, hosts.deepLFree + "/v2/translate");
    QCOMPARE(deepLRequest(hosts, {}, u"abc:fx0"_s, u"ja"_s).http.url, hosts.deepL + "/v2/translate");
}

void WebClientsTest::targetCodes_data()
{
    QTest::addColumn<QString>("google");
    QTest::addColumn<QString>("deepL");
    QTest::addColumn<QString>("microsoft");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("dictionary");
    const auto row = [](const char *code, const QString &google, const QString &deepL, const QString &microsoft,
                        const QString &prompt, const QString &inEnglish) {
        QTest::newRow(code) << google << deepL << microsoft << prompt << u"%1 (%2)"_s.arg(prompt, inEnglish);
    };
    row("zh-Hant", u"zh-TW"_s, u"ZH-HANT"_s, u"zh-Hant"_s, u"繁體中文"_s, u"Traditional Chinese"_s);
    row("zh-Hans", u"zh-CN"_s, u"ZH-HANS"_s, u"zh-Hans"_s, u"簡體中文"_s, u"Simplified Chinese"_s);
    row("en-US", u"en"_s, u"EN-US"_s, u"en"_s, u"英文"_s, u"English"_s);
    row("en", u"en"_s, u"EN-US"_s, u"en"_s, u"英文"_s, u"English"_s);
    row("ja", u"ja"_s, u"JA"_s, u"ja"_s, u"日文"_s, u"Japanese"_s);
    row("ko", u"ko"_s, u"KO"_s, u"ko"_s, u"韓文"_s, u"Korean"_s);
    row("fr", u"fr"_s, u"FR"_s, u"fr"_s, u"繁體中文"_s, u"Traditional Chinese"_s);
    row("en-us", u"en-us"_s, u"EN-US"_s, u"en-us"_s, u"繁體中文"_s, u"Traditional Chinese"_s);
}

void WebClientsTest::targetCodes()
{
    const QString code = QString::fromLatin1(QTest::currentDataTag());
    QTEST(googleLanguageCode(code), "google");
    QTEST(deepLLanguageCode(code), "deepL");
    QTEST(microsoftLanguageCode(code), "microsoft");
    QTEST(promptLanguageName(code), "prompt");
    QTEST(dictionaryLanguageName(code), "dictionary");
}

void WebClientsTest::textsArriveWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("what splits a query") << u"a&b=c+d#e;f%26?g"_s;
    QTest::newRow("white space") << u"a b\tc\nd"_s;
    QTest::newRow("a URL") << u"file:///etc/hosts and https://user@example.org:8443/x?y=1&z=2"_s;
    QTest::newRow("beyond ASCII") << u"螢幕 é 👍🇹🇼 ~'()*!$,"_s;
    QTest::newRow("quotes and backslashes") << u"\"C:\\dir\\\" <b>[x]{y}^`|."_s;
    QTest::newRow("nothing") << u""_s;
}

void WebClientsTest::textsArriveWhole()
{
    QFETCH(QString, text);
    m_server.respondWith(
        [](const ReceivedRequest &request) { return answerAsService(request, [](const QString &t) { return t; }); });
    for (const Service service : services) {
        QCOMPARE(translate(service, {text, u"x"_s}), (QStringList{text, u"x"_s}));
        QCOMPARE(textsIn(m_server.requests().constLast()), (QStringList{text, u"x"_s}));
    }
}

void WebClientsTest::blocksAreSentInChunks_data()
{
    QTest::addColumn<Service>("service");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("sizes");
    const auto row = [](Service service, int count, const QList<int> &sizes) {
        QTest::addRow("%s, %d", labelOf(service).toUtf8().constData(), count) << service << count << sizes;
    };
    row(Service::GoogleFree, 0, {});
    row(Service::GoogleFree, 1, {1});
    row(Service::GoogleFree, 6, {6});
    row(Service::GoogleFree, 7, {6, 1});
    row(Service::GoogleFree, 13, {6, 6, 1});
    row(Service::GoogleFree, 18, {6, 6, 6});
    row(Service::GoogleFree, 19, {6, 6, 6, 1});
    row(Service::GoogleCloud, 0, {});
    row(Service::GoogleCloud, 128, {128});
    row(Service::GoogleCloud, 129, {128, 1});
    row(Service::GoogleCloud, 300, {128, 128, 44});
    row(Service::DeepL, 0, {0});
    row(Service::DeepL, 50, {50});
    row(Service::DeepL, 129, {50, 50, 29});
    row(Service::Microsoft, 0, {});
    row(Service::Microsoft, 100, {100});
    row(Service::Microsoft, 101, {100, 1});
}

void WebClientsTest::blocksAreSentInChunks()
{
    QFETCH(Service, service);
    QFETCH(int, count);
    m_server.respondWith([](const ReceivedRequest &request) {
        return answerAsService(request, [](const QString &text) { return text.toUpper(); });
    });
    QStringList expected;
    for (const QString &text : numberedTexts(count))
        expected.append(text.toUpper());
    QCOMPARE(translate(service, numberedTexts(count)), expected);
    QList<int> sizes;
    for (const ReceivedRequest &request : m_server.requests())
        sizes.append(int(textsIn(request).size()));
    if (service == Service::GoogleFree)
        std::sort(sizes.rbegin(), sizes.rend()); // those of one wave arrive in any order
    else
        for (qsizetype i = 0; i < sizes.size(); ++i)
            QCOMPARE(m_server.requests()[i].answersBefore, int(i));
    QTEST(sizes, "sizes");
}

void WebClientsTest::noRequestIsAboveTheServicesLimits()
{
    m_server.respondWith(
        [](const ReceivedRequest &request) { return answerAsService(request, [](const QString &t) { return t; }); });
    // Control characters are six bytes each in JSON, ideographs three.
    for (const QString &text : {u"字"_s.repeated(8000), u"\u0001"_s.repeated(8000), u"a"_s.repeated(30'000)}) {
        const QStringList texts(20, text);
        for (const Service service : {Service::GoogleCloud, Service::DeepL, Service::Microsoft})
            QVERIFY(translate(service, texts) == texts);
    }
}

void WebClientsTest::separatorsWithinTextsAreTheirOwn()
{
    m_server.respondWith(
        [](const ReceivedRequest &request) { return answerAsService(request, [](const QString &t) { return t; }); });
    const QStringList texts{u"a"_s, u"b|"_s, u"c"_s, u"d||||e"_s, u"||||"_s, u"f"_s, u"g"_s};
    QCOMPARE(translate(Service::GoogleFree, texts), texts);
}

void WebClientsTest::wavesFollowEachOther()
{
    // Of the first wave, one answer comes at once and two come late; had a fourth request not waited for all three, it
    // would have come in between.
    m_server.respondWith([](const ReceivedRequest &request) {
        QueuedAnswer answer = answerAsService(request, [](const QString &text) { return text; });
        answer.afterRequests = 3;
        answer.delay = request.target.endsWith("line%200%7C%7C%7C%7Cline%201%7C%7C%7C%7Cline%202%7C%7C%7C%7C"
                                               "line%203%7C%7C%7C%7Cline%204%7C%7C%7C%7Cline%205")
                           ? 0ms
                           : 100ms;
        return answer;
    });
    QCOMPARE(translate(Service::GoogleFree, numberedTexts(19)), numberedTexts(19));
    const auto requests = m_server.requests();
    QCOMPARE(requests.size(), 4);
    QCOMPARE(requests[2].unansweredThen, 3);
    QCOMPARE(requests[3].answersBefore, 3);
}

void WebClientsTest::answersOfAnotherForm_data()
{
    QTest::addColumn<Service>("service");
    QTest::addColumn<QByteArray>("body");      // for the texts "one" and "two"
    QTest::addColumn<QStringList>("expected"); // empty: an invalid response
    const auto row = [](Service service, const char *name, const QByteArray &body, const QStringList &expected = {}) {
        QTest::addRow("%s: %s", labelOf(service).toUtf8().constData(), name) << service << body << expected;
    };
    for (const Service service : services) {
        row(service, "nothing", "");
        row(service, "prose", "Too many requests");
        row(service, "a page", "<!DOCTYPE html><html></html>");
        row(service, "null", "null");
        row(service, "empty object", "{}");
        row(service, "empty array", "[]");
        row(service, "cut off", R"({"translations":[{"text":"一"},{"te)");
        row(service, "nested 100,000 deep", QByteArray(100'000, '[') + QByteArray(100'000, ']'));
        row(service, "broken UTF-8", "[[[\"\xe4\xb8||||b\"]]]");
        row(service, "a NUL byte", QByteArray("[[[\"a\0||||b\"]]]", 16));
    }
    row(Service::GoogleFree, "a piece too few", R"([[["一"]]])");
    row(Service::GoogleFree, "a piece too many", R"([[["一||||二||||三"]]])");
    row(Service::GoogleFree, "a sentence is no array", R"([[["一||||二"],"x"]])");
    row(Service::GoogleFree, "the first element is no array", R"([{"0":["一||||二"]}])");
    row(Service::GoogleFree, "numbers and nulls are skipped", R"([[[5],["一||"],[null,"x"],[],["||二"]],null,"en"])",
        {u"一"_s, u"二"_s});
    row(Service::GoogleCloud, "one too few", R"({"data":{"translations":[{"translatedText":"一"}]}})");
    row(Service::GoogleCloud, "a number for a text",
        R"({"data":{"translations":[{"translatedText":"一"},{"translatedText":2}]}})");
    row(Service::GoogleCloud, "data is no object", R"({"data":[{"translatedText":"一"},{"translatedText":"二"}]})");
    row(Service::GoogleCloud, "more than asked for",
        R"({"data":{"translations":[{"translatedText":"一"},{"translatedText":"二"},{}]}})");
    row(Service::DeepL, "one too few", R"({"translations":[{"text":"一"}]})");
    row(Service::DeepL, "one too many", R"({"translations":[{"text":"一"},{"text":"二"},{"text":"三"}]})");
    row(Service::DeepL, "an element without text", R"({"translations":[{"text":"一"},{"detected":"EN"}]})",
        {u"一"_s, u"two"_s});
    row(Service::DeepL, "more arrays than memory should hold",
        R"({"translations":[{"text":"一"},{"text":"二"}],"x":[[])" + QByteArray(",[]").repeated(1'000'000) + "]}");
    row(Service::DeepL, "a number and a null", R"({"translations":[{"text":1},null]})", {u"one"_s, u"two"_s});
    row(Service::Microsoft, "one too few", R"([{"translations":[{"text":"一"}]}])");
    row(Service::Microsoft, "no translation", R"([{"translations":[{"text":"一"}]},{"translations":[]}])");
    row(Service::Microsoft, "an object", R"({"translations":[{"text":"一"},{"text":"二"}]})");
    row(Service::Microsoft, "a null", R"([{"translations":[{"text":"一"}]},{"translations":[{"text":null}]}])");
    row(Service::Microsoft, "only the first counts",
        R"([{"translations":[{"text":"一"},{"text":"x"}]},{"translations":[{"text":"二"}]}])", {u"一"_s, u"二"_s});
}

void WebClientsTest::answersOfAnotherForm()
{
    QFETCH(Service, service);
    QFETCH(QByteArray, body);
    QFETCH(QStringList, expected);
    m_server.enqueue(QueuedAnswer::json(body));
    if (expected.isEmpty()) {
        QCOMPARE(failureOf(service, {u"one"_s, u"two"_s}), labelOf(service) + u" 回應格式無法解析"_s);
    } else {
        QCOMPARE(translate(service, {u"one"_s, u"two"_s}), expected);
    }
}

void WebClientsTest::refusals_data()
{
    QTest::addColumn<QueuedAnswer>("answer");
    QTest::addColumn<QString>("failure"); // after the label
    QTest::newRow("a message") << QueuedAnswer::reply(403, R"({"error":{"message":"Quota"}})")
                               << u" API 錯誤 403：Quota"_s;
    QTest::newRow("not modified") << QueuedAnswer::reply(302, "moved", {{"Location", "https://elsewhere.example/"}})
                                  << u" API 錯誤 302：moved"_s;
    QTest::newRow("no HTTP") << QueuedAnswer::raw("220 mail.example ESMTP\r\n") << u" 回應格式無法解析"_s;
    QTest::newRow("hangs up") << QueuedAnswer::raw("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf") << QString();
}

void WebClientsTest::refusals()
{
    QFETCH(QueuedAnswer, answer);
    QFETCH(QString, failure);
    for (const Service service : services) {
        m_server.enqueue(answer);
        QCOMPARE(failureOf(service, {u"text"_s}),
                 failure.isEmpty() ? u"與伺服器的連線已中斷"_s : labelOf(service) + failure);
    }
    QCOMPARE(m_server.requests().size(), qsizetype(services.size())); // nothing is tried again
}

void WebClientsTest::theFirstFailureEndsTheCall_data()
{
    QTest::addColumn<Service>("service");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("requests");
    QTest::newRow("Google keyless: the second wave is not sent") << Service::GoogleFree << 40 << 3;
    QTest::newRow("Google Cloud: the second chunk is not sent") << Service::GoogleCloud << 300 << 1;
    QTest::newRow("Microsoft: the second chunk is not sent") << Service::Microsoft << 300 << 1;
}

void WebClientsTest::theFirstFailureEndsTheCall()
{
    QFETCH(Service, service);
    QFETCH(int, count);
    QFETCH(int, requests);
    m_server.respondWith([requests](const ReceivedRequest &) {
        QueuedAnswer answer = QueuedAnswer::reply(429, R"({"message":"Slow down"})");
        answer.afterRequests = requests;
        return answer;
    });
    QCOMPARE(failureOf(service, numberedTexts(count)), labelOf(service) + u" API 錯誤 429：Slow down"_s);
    QCOMPARE(m_server.requests().size(), requests);
}

void WebClientsTest::valuesThatMakeNoUrl_data()
{
    QTest::addColumn<Service>("service");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("failure");
    QTest::newRow("a key of two lines") << Service::GoogleCloud << u"ja"_s << u"a\r\nX-Injected: 1"_s
                                        << u"Google Cloud API URL 無效"_s;
    QTest::newRow("a key with a full-width space")
        << Service::GoogleCloud << u"ja"_s << u"a\u3000b"_s << u"Google Cloud API URL 無效"_s;
    QTest::newRow("a target with a space")
        << Service::Microsoft << u"x y"_s << u"k"_s << u"Microsoft Translator API URL 無效"_s;
    QTest::newRow("a target with a space, keyless")
        << Service::GoogleFree << u"x y"_s << u""_s << u"Google 免費翻譯 回應格式無法解析"_s;
    QTest::newRow("a key of two lines in a header")
        << Service::DeepL << u"ja"_s << u"a\r\nX-Injected: 1"_s << u"API Key 或設定含有無法傳送的字元"_s;
}

void WebClientsTest::valuesThatMakeNoUrl()
{
    QFETCH(Service, service);
    QFETCH(QString, target);
    QFETCH(QString, key);
    QTEST(failureOf(service, {u"text"_s}, target, key), "failure");
    QVERIFY(m_server.requests().isEmpty());
}

void WebClientsTest::messagesOfErrors_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("message");
    const QString hint = u"請檢查 API Key、模型名稱與服務設定"_s;
    QTest::newRow("nested") << QByteArray(R"({"error":{"message":"Nested"},"message":"Top"})") << u"Nested"_s;
    QTest::newRow("at the top") << QByteArray(R"({"error":"code","message":"Top"})") << u"Top"_s;
    QTest::newRow("megabytes") << R"({"message":")" + QByteArray(5'000'000, 'x') + R"("})" << QString(4000, u'x');
    QTest::newRow("a number for a message") << QByteArray(R"({"error":{"message":5}})") << hint;
    QTest::newRow("an object without one") << QByteArray(R"({"detail":"x"})") << hint;
    QTest::newRow("an array is plain text")
        << QByteArray(R"([{"error":{"message":"x"}}])") << uR"([{"error":{"message":"x"}}])"_s;
    QTest::newRow("a long page") << QByteArray("<html>" + QByteArray(2000, 'x'))
                                 << QString(u"<html>"_s + QString(294, u'x'));
    QTest::newRow("characters are what readers see")
        << u"👨‍👩‍👧"_s.repeated(400).toUtf8() << u"👨‍👩‍👧"_s.repeated(300);
    QTest::newRow("no half characters") << R"({"message":"x)" + u"😀"_s.repeated(2000).toUtf8() + R"("})"
                                        << u"x"_s + u"😀"_s.repeated(1999);
    QTest::newRow("the whole word that holds a key")
        << QByteArray(R"({"message":"max_k3y-4711_tokens, max"})") << u"•••, max"_s;
    QTest::newRow("nothing") << QByteArray() << u""_s;
    QTest::newRow("no UTF-8") << QByteArray("\xff\xfe") << u"未知錯誤"_s;
}

void WebClientsTest::messagesOfErrors()
{
    QFETCH(QByteArray, body);
    QTEST(providerErrorMessage(body, {u"k3y-4711"_s, u"x"_s}, m_texts.manager), "message");
}

void WebClientsTest::theKeyIsInNoMessage_data()
{
    QTest::addColumn<QByteArray>("body");
    const QString key = u"sk/Secret+1"_s;
    QTest::newRow("echoed in a message") << QByteArray(R"({"error":{"message":"Bad key sk/Secret+1."}})");
    QTest::newRow("escaped in JSON") << QByteArray(R"({"message":"Bad key sk\/Secret\u002b1."})");
    QTest::newRow("escaped in JSON within plain text")
        << QByteArray(R"([{"reason":"sk\/Secret\u002B1"},{"cause":"{\"key\":\"sk\\/Secret\\u002b1\"}"}])");
    QTest::newRow("escaped in HTML") << QByteArray(
        "<b>sk&#x2F;Secret&#43;1</b> sk/Secret&#x02b;1 &#115;k/&#83;ecret+1");
    QTest::newRow("percent-encoded in lower case") << QByteArray("GET /v2?key=sk%2fSecret%2b1 %73k/%53ecret+1");
    QTest::newRow("percent-encoded") << QByteArray("GET /v2?key=sk%2FSecret%2B1 failed");
    QTest::newRow("cut by the limit of 300") << QByteArray(296, 'x') + "sk/Secret+1";
}

void WebClientsTest::theKeyIsInNoMessage()
{
    QFETCH(QByteArray, body);
    for (const Service service : services) {
        if (service == Service::GoogleFree)
            continue; // has none
        m_server.enqueue(QueuedAnswer::reply(401, body));
        const QString failure = failureOf(service, {u"text"_s}, u"ja"_s, u"sk/Secret+1"_s);
        QVERIFY(failure.contains(u"API 錯誤 401"_s));
        QVERIFY2(!failure.contains(u"Sec"_s) && !failure.contains(u"sk/"_s), qPrintable(failure));
    }
}

QTEST_GUILESS_MAIN(WebClientsTest)
#include "WebClientsTest.moc"
