#include "BlockBatch.h"
#include "CompatibleClient.h"
#include "GeminiClient.h"
#include "HttpSession.h"
#include "Prompts.h"
#include "QueuedServer.h"
#include "ServiceResponder.h"
#include "TestTexts.h"
#include "TranslationClients.h"
#include "TranslationEngine.h"
#include "TranslationError.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

enum class Model { OpenAI, Anthropic, Compatible, Gemini };

constexpr std::array models{Model::OpenAI, Model::Anthropic, Model::Compatible, Model::Gemini};

const QString failurePrefix = u"failure: "_s;

QString labelOf(Model model)
{
    return std::array{u"OpenAI"_s, u"Claude"_s, u"相容 API"_s, u"Gemini"_s}[size_t(model)];
}

QByteArray compact(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).toJson(QJsonDocument::Compact);
}

} // namespace

class LanguageModelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void requestsOnTheWire_data();
    void requestsOnTheWire();
    void theInstructionsKeepTheirWords();
    void whatModelsReply_data();
    void whatModelsReply();
    void answersOfAnotherForm_data();
    void answersOfAnotherForm();
    void refusals();
    void longPassesAreSentInSeveralRequests();
    void secretsOfTheAddressAreInNoMessage();
    void theFirstTextIsTheAnswer();
    void dictionaryAnswersOfGemini_data();
    void dictionaryAnswersOfGemini();
    void baseUrls_data();
    void baseUrls();
    void textsThatAreNoUnicodeAreRefused();
    void keysThatCannotBeSent();

private:
    LanguageModelProvider provider(Model model, const QString &key) const;
    /// The translations, or what the call throws as the one text.
    QStringList translateBlocks(Model model, const QStringList &texts, const QString &key = u"k3y-4711"_s) const;
    QString translateText(Model model, const QString &text, const QString &key = u"k3y-4711"_s) const;

    TestTexts m_texts;
    QueuedServer m_server;
    HttpSession m_session;
    TranslationClients m_clients = remoteClients(m_session, m_texts.manager, hostsAt(m_server.origin()));
};

void LanguageModelsTest::init()
{
    m_server.reset();
    m_server.respondWith({});
}

LanguageModelProvider LanguageModelsTest::provider(Model model, const QString &key) const
{
    if (model == Model::OpenAI)
        return OpenAIProvider{key, u"m-1"_s};
    if (model == Model::Anthropic)
        return AnthropicProvider{key, u"m-1"_s};
    return CompatibleProvider{key, u"m-1"_s, QString::fromLatin1(m_server.origin()) + u"/api/v1/"_s};
}

QStringList LanguageModelsTest::translateBlocks(Model model, const QStringList &texts, const QString &key) const
try {
    if (model == Model::Gemini)
        return m_clients.geminiBlocks({}, key, blocksOf(texts), u"ja"_s);
    return m_clients.modelBlocks({}, blocksOf(texts), u"ja"_s, provider(model, key));
} catch (...) {
    return {failurePrefix + failureOfCurrentException(m_texts.manager).description};
}

QString LanguageModelsTest::translateText(Model model, const QString &text, const QString &key) const
try {
    if (model == Model::Gemini)
        return m_clients.geminiText({}, key, text, u"ja"_s);
    return m_clients.modelText({}, text, u"ja"_s, provider(model, key));
} catch (...) {
    return failurePrefix + failureOfCurrentException(m_texts.manager).description;
}

void LanguageModelsTest::requestsOnTheWire_data()
{
    QTest::addColumn<Model>("model");
    QTest::addColumn<bool>("isBatch");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QStringList>("headers"); // besides the type of the content
    QTest::addColumn<QByteArray>("body");     // INSTRUCTION and USER stand for the texts
    const QStringList bearer{u"Authorization: Bearer k3y-4711"_s};
    QTest::newRow("OpenAI, blocks") << Model::OpenAI << true << QByteArray("/v1/responses") << bearer << compact(R"({
        "model": "m-1", "instructions": "INSTRUCTION", "input": "USER", "store": false, "max_output_tokens": 8192,
        "text": {"format": {"type": "json_schema", "name": "translation_blocks", "strict": true, "schema": {
            "type": "object", "required": ["translations"], "additionalProperties": false,
            "properties": {"translations": {"type": "array", "items": {
                "type": "object", "required": ["id", "text"], "additionalProperties": false,
                "properties": {"id": {"type": "integer"}, "text": {"type": "string"}}}}}}}}})");
    QTest::newRow("OpenAI, text") << Model::OpenAI << false << QByteArray("/v1/responses") << bearer << compact(R"({
        "model": "m-1", "instructions": "INSTRUCTION", "input": "USER", "store": false, "max_output_tokens": 8192})");
    const QStringList anthropic{u"x-api-key: k3y-4711"_s, u"anthropic-version: 2023-06-01"_s};
    for (const bool isBatch : {true, false}) {
        QTest::addRow("Anthropic, %s", isBatch ? "blocks" : "text")
            << Model::Anthropic << isBatch << QByteArray("/v1/messages") << anthropic
            << compact(R"({"model": "m-1", "max_tokens": 8192, "temperature": 0.1, "system": "INSTRUCTION",
                           "messages": [{"role": "user", "content": "USER"}]})");
    }
    const QByteArray chat = R"({"model": "m-1", "temperature": 0.1, "max_tokens": 8192, "stream": false, FORMAT
        "messages": [{"role": "system", "content": "INSTRUCTION"}, {"role": "user", "content": "USER"}]})";
    QTest::newRow("compatible, blocks") << Model::Compatible << true << QByteArray("/api/v1/chat/completions") << bearer
                                        << compact(QByteArray(chat).replace(
                                               "FORMAT", R"("response_format": {"type": "json_object"},)"));
    QTest::newRow("compatible, text") << Model::Compatible << false << QByteArray("/api/v1/chat/completions") << bearer
                                      << compact(QByteArray(chat).replace("FORMAT", ""));
    const QByteArray gemini = R"({"system_instruction": {"parts": [{"text": "INSTRUCTION"}]},
        "contents": [{"parts": [{"text": "USER"}]}], "generationConfig": CONFIG})";
    const QByteArray geminiTarget = "/v1beta/models/gemini-2.5-flash:generateContent?key=k3y-4711";
    QTest::newRow("Gemini, blocks") << Model::Gemini << true << geminiTarget << QStringList()
                                    << compact(QByteArray(gemini).replace("CONFIG", R"({"temperature": 0.1,
        "maxOutputTokens": 8192, "responseMimeType": "application/json"})"));
    QTest::newRow("Gemini, text") << Model::Gemini << false << geminiTarget << QStringList()
                                  << compact(QByteArray(gemini).replace(
                                         "CONFIG", R"({"temperature": 0.2, "maxOutputTokens": 1024})"));
}

void LanguageModelsTest::requestsOnTheWire()
{
    QFETCH(Model, model);
    QFETCH(bool, isBatch);
    m_server.respondWith([](const ReceivedRequest &request) {
        return answerAsService(request, [](const QString &text) { return u"«%1»"_s.arg(text); });
    });
    if (isBatch)
        QCOMPARE(translateBlocks(model, {u"He said \"hi\""_s, u"\\n"_s}),
                 (QStringList{u"«He said \"hi\"»"_s, u"«\\n»"_s}));
    else
        QCOMPARE(translateText(model, u"hello"_s), u"«hello»"_s);
    const ReceivedRequest request = m_server.requests().constFirst();
    QCOMPARE(request.method, QByteArray("POST"));
    QTEST(request.target, "target");
    QStringList headers = headersOf(request);
    QCOMPARE(headers.takeFirst(), u"Content-Type: application/json"_s);
    QTEST(headers, "headers");

    QString instruction = isBatch ? blockInstruction(u"日文"_s) : dictionaryInstruction(u"日文"_s);
    if (model == Model::Gemini)
        instruction = isBatch ? geminiBlockInstruction(u"日文"_s) : geminiDictionaryInstruction(u"日文 (Japanese)"_s);
    const QString user = isBatch ? uR"([{"id":0,"text":"He said \"hi\""},{"id":1,"text":"\\n"}])"_s : u"hello"_s;
    const auto inJson = [](const QString &text) {
        return QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
    };
    QFETCH(QByteArray, body);
    QCOMPARE(request.body, body.replace("\"INSTRUCTION\"", inJson(instruction)).replace("\"USER\"", inJson(user)));
}

void LanguageModelsTest::theInstructionsKeepTheirWords()
{
    // Digests of texts that were written down elsewhere: a slip in a long instruction is seen by nobody.
    const auto digest = [](const QString &instruction) {
        return QCryptographicHash::hash(instruction.toUtf8(), QCryptographicHash::Sha256).toHex().first(32);
    };
    QCOMPARE(digest(blockInstruction(u"韓文"_s)), "57343bd395c1ade0e56a763155079df0");
    QCOMPARE(digest(geminiBlockInstruction(u"韓文"_s)), "6c242e6fdc4fa3137f12dffbd9fa0e78");
    QCOMPARE(digest(dictionaryInstruction(u"韓文"_s)), "22b622e8d9f373576838854d62d25613");
    QCOMPARE(digest(geminiDictionaryInstruction(u"韓文"_s)), "ca83b312d7778d0ae392d8e417c6a1ac");
}

void LanguageModelsTest::whatModelsReply_data()
{
    QTest::addColumn<QString>("elements"); // of the array; ELEMENTS in the text stands for the array
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected"); // joined by |; empty: no JSON
    const QString array = u"ELEMENTS"_s;
    const QString plain = uR"([{"id":0,"text":"A"},{"id":1,"text":"B"},{"id":2,"text":"C"}])"_s;
    const auto row = [&](const char *name, const QString &elements, const QString &expected) {
        QTest::newRow(name) << elements << array << expected;
    };
    row("in order", plain, u"A|B|C"_s);
    row("out of order", uR"([{"id":2,"text":"C"},{"id":0,"text":"A"},{"id":1,"text":"B"}])"_s, u"A|B|C"_s);
    row("one alone", uR"([{"id":1,"text":"B"}])"_s, u"0|B|2"_s);
    row("none", u"[]"_s, u"0|1|2"_s);
    row("string ids", uR"([{"id":"0","text":"A"}])"_s, u"0|1|2"_s);
    row("an id twice", uR"([{"id":0,"text":"A"},{"id":0,"text":"Z"}])"_s, u"Z|1|2"_s);
    row("a bad repetition doesn't count", uR"([{"id":0,"text":"A"},{"id":0,"text":null}])"_s, u"A|1|2"_s);
    row("renumbered from 1", uR"([{"id":1,"text":"A"},{"id":2,"text":"B"},{"id":3,"text":"C"}])"_s, u"0|A|B"_s);
    row("far beyond", uR"([{"id":-1,"text":"x"},{"id":1e300,"text":"x"},{"id":9007199254740993,"text":"x"}])"_s,
        u"0|1|2"_s);
    row("no whole numbers", uR"([{"id":0.5,"text":"x"},{"id":true,"text":"x"},{"id":null,"text":"x"}])"_s, u"0|1|2"_s);
    row("whole numbers with a point", uR"([{"id":1.0,"text":"B"}])"_s, u"0|B|2"_s);
    row("texts that are none",
        uR"([{"id":0,"text":5},{"id":1,"text":null},{"id":2,"text":["C"]},{"text":"x"},{"id":1}])"_s, u"0|1|2"_s);
    row("more than asked for", uR"([{"id":0,"text":"A","note":"x"},{"id":7,"text":"x"}])"_s, u"A|1|2"_s);
    row("an empty translation stands", uR"([{"id":0,"text":""}])"_s, u"|1|2"_s);
    row("a key twice", uR"([{"id":0,"text":"x","text":"A"}])"_s, u"A|1|2"_s);
    QTest::newRow("in a fence") << plain << u"\n```json\nELEMENTS\n```\n"_s << u"A|B|C"_s;
    QTest::newRow("in a plain fence") << plain << u"```\nELEMENTS```"_s << u"A|B|C"_s;
    QTest::newRow("in a fence of capitals") << plain << u"```JSON\nELEMENTS\n```"_s << u""_s;
    QTest::newRow("prose before") << plain << u"Here you are: ELEMENTS"_s << u""_s;
    QTest::newRow("prose after") << plain << u"ELEMENTS I hope this helps!"_s << u""_s;
    QTest::newRow("a trailing comma") << uR"([{"id":0,"text":"A"},])"_s << array << u""_s;
    QTest::newRow("cut off at the limit") << uR"([{"id":0,"text":"A"},{"id":1,"te)"_s << array << u""_s;
    QTest::newRow("single quotes") << u"[{'id':0,'text':'A'}]"_s << array << u""_s;
    QTest::newRow("nothing") << plain << u""_s << u""_s;
    QTest::newRow("a refusal") << plain << u"I can't help with that."_s << u""_s;
}

void LanguageModelsTest::whatModelsReply()
{
    QFETCH(QString, elements);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QStringList sources{u"0"_s, u"1"_s, u"2"_s};
    for (const Model model : models) {
        const bool isArray = model == Model::Gemini;
        m_server.respondWith([&](const ReceivedRequest &request) {
            const QString json = isArray ? elements : u"{\"translations\":"_s + elements + u'}';
            return modelReply(request, QString(text).replace(u"ELEMENTS"_s, json));
        });
        const QString failure = isArray ? u"JSON Array parse error"_s : u"回應內容不是有效的 JSON"_s;
        QCOMPARE(translateBlocks(model, sources).join(u'|'), expected.isEmpty() ? failurePrefix + failure : expected);
    }
}

void LanguageModelsTest::answersOfAnotherForm_data()
{
    QTest::addColumn<QList<Model>>("models");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text"); // instead of a body: what the model says
    const QList<Model> all(models.begin(), models.end());
    const auto row = [](const QList<Model> &which, const char *name, const QByteArray &body) {
        QTest::newRow(name) << which << body << QString();
    };
    row(all, "nothing", "");
    row(all, "prose", "Bad gateway");
    row(all, "null", "null");
    row(all, "empty object", "{}");
    row(all, "empty array", "[]");
    row(all, "nested 100,000 deep", R"({"output":)" + QByteArray(100'000, '['));
    row(all, "broken UTF-8", "{\"content\":[{\"type\":\"text\",\"text\":\"\xe4\xb8\"}]}");
    row({Model::OpenAI}, "output is no array", R"({"output":{"content":[{"type":"output_text","text":"x"}]}})");
    row({Model::OpenAI}, "a refusal item", R"({"output":[{"content":[{"type":"refusal","refusal":"no"}]}]})");
    row({Model::OpenAI}, "only the first text of an item counts",
        R"({"output":[{"content":[{"type":"output_text","text":5},{"type":"output_text","text":"x"}]},null]})");
    row({Model::Anthropic}, "no text part", R"({"content":[{"type":"tool_use","text":"x"}]})");
    row({Model::Anthropic}, "the first text part has none",
        R"({"content":[{"type":"text","text":null},{"type":"text","text":"x"}]})");
    row({Model::Compatible}, "no choices", R"({"choices":[]})");
    row({Model::Compatible}, "content is null", R"({"choices":[{"message":{"content":null}}]})");
    row({Model::Compatible}, "content in parts", R"({"choices":[{"message":{"content":[{"text":"x"}]}}]})");
    row({Model::Gemini}, "blocked", R"({"promptFeedback":{"blockReason":"SAFETY"}})");
    row({Model::Gemini}, "no parts", R"({"candidates":[{"content":{"role":"model"},"finishReason":"MAX_TOKENS"}]})");
    QTest::newRow("another object") << QList{Model::OpenAI, Model::Anthropic, Model::Compatible} << QByteArray()
                                    << uR"({"blocks":[]})"_s;
    QTest::newRow("an empty object") << QList{Model::OpenAI, Model::Anthropic, Model::Compatible} << QByteArray()
                                     << u"{}"_s;
    QTest::newRow("an array for an object")
        << QList{Model::OpenAI, Model::Anthropic, Model::Compatible} << QByteArray() << uR"([{"id":0,"text":"A"}])"_s;
    QTest::newRow("an element that is no object") << all << QByteArray() << uR"({"translations":["A"]})"_s;
    QTest::newRow("an object for an array") << QList{Model::Gemini} << QByteArray() << uR"({"id":0,"text":"A"})"_s;
    QTest::newRow("an array of texts") << QList{Model::Gemini} << QByteArray() << uR"(["A"])"_s;
}

void LanguageModelsTest::answersOfAnotherForm()
{
    QFETCH(QList<Model>, models);
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    for (const Model model : models) {
        m_server.respondWith([&](const ReceivedRequest &request) {
            return text.isEmpty() ? QueuedAnswer::json(body) : modelReply(request, text);
        });
        QString failure = (text.isEmpty() ? labelOf(model) : u"AI 翻譯"_s) + u" 回應格式無法解析"_s;
        if (model == Model::Gemini)
            failure = text.isEmpty() ? u"Response parse error"_s : u"JSON Array parse error"_s;
        QCOMPARE(translateBlocks(model, {u"0"_s}), QStringList{failurePrefix + failure});
    }
}

void LanguageModelsTest::refusals()
{
    for (const Model model : models) {
        m_server.enqueue(QueuedAnswer::reply(429, R"({"error":{"message":"Slow down, k3y-4711"}})"));
        QCOMPARE(translateBlocks(model, {u"0"_s}),
                 QStringList{failurePrefix + labelBeforeAPI(labelOf(model)) + u" API 錯誤 429：Slow down, •••"_s});
        m_server.enqueue(QueuedAnswer::reply(503, ""));
        QCOMPARE(translateBlocks(model, {u"0"_s}),
                 QStringList{failurePrefix + labelBeforeAPI(labelOf(model)) + u" API 錯誤 503："_s +
                             (model == Model::Gemini ? u"未知錯誤"_s : u""_s)});
        m_server.enqueue(QueuedAnswer::raw("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"));
        QCOMPARE(translateBlocks(model, {u"0"_s}), QStringList{failurePrefix + u"與伺服器的連線已中斷"_s});
    }
    QCOMPARE(m_server.requests().size(), qsizetype(3 * models.size())); // nothing is tried again
}

void LanguageModelsTest::longPassesAreSentInSeveralRequests()
{
    m_server.respondWith([](const ReceivedRequest &request) {
        return answerAsService(request, [](const QString &text) { return text.toUpper(); });
    });
    QStringList texts;
    QStringList expected;
    for (int i = 0; i < 300; ++i) {
        texts.append(u"第%1行 a line as long as many"_s.arg(i));
        expected.append(texts.last().toUpper());
    }
    for (const Model model : models) {
        m_server.reset();
        QCOMPARE(translateBlocks(model, texts), expected);
        QVERIFY(m_server.requests().size() > 1);
        m_server.reset();
        QCOMPARE(translateBlocks(model, texts.first(60)), expected.first(60));
        QCOMPARE(m_server.requests().size(), 1);
    }
}

void LanguageModelsTest::secretsOfTheAddressAreInNoMessage()
{
    m_server.enqueue(QueuedAnswer::reply(403, R"({"message":"No: user-4711 pass%2Fword q-secret-1"})"));
    QByteArray address = m_server.origin() + "/v1?api-key=q-secret-1";
    address.replace("http://", "http://user-4711:pass%2Fword@");
    try {
        m_clients.modelBlocks({}, blocksOf({u"0"_s}), u"ja"_s,
                              CompatibleProvider{u"k3y-4711"_s, u"m"_s, QString::fromLatin1(address)});
        QFAIL("refused");
    } catch (const TranslationError &error) {
        QCOMPARE(error.failure(m_texts.manager).description, u"相容 API 錯誤 403：No: ••• ••• •••"_s);
    }
}

void LanguageModelsTest::theFirstTextIsTheAnswer()
{
    m_server.enqueue(QueuedAnswer::json(R"({"output":[{"type":"reasoning"},{"content":[{"type":"summary","text":"x"},
        {"type":"output_text","text":" first "}]},{"content":[{"type":"output_text","text":"second"}]}]})"));
    QCOMPARE(translateText(Model::OpenAI, u"t"_s), u" first "_s);
    m_server.enqueue(QueuedAnswer::json(
        R"({"content":[{"type":"thinking","text":"x"},{"type":"text","text":"first"},{"type":"text","text":"x"}]})"));
    QCOMPARE(translateText(Model::Anthropic, u"t"_s), u"first"_s);
}

void LanguageModelsTest::dictionaryAnswersOfGemini_data()
{
    QTest::addColumn<QueuedAnswer>("answer");
    QTest::addColumn<QString>("result");
    QTest::newRow("a translation is trimmed")
        << QueuedAnswer::json(R"({"candidates":[{"content":{"parts":[{"text":"\n辭典\n字典\n"}]}}]})")
        << u"辭典\n字典"_s;
    QTest::newRow("no text") << QueuedAnswer::json(R"({"candidates":[{"content":{"parts":[]}}]})")
                             << u"❌ API 回應格式錯誤或金鑰無效"_s;
    QTest::newRow("no JSON") << QueuedAnswer::json("<html>") << u"❌ API 回應格式錯誤或金鑰無效"_s;
    QTest::newRow("refused") << QueuedAnswer::reply(400, R"({"error":{"message":"API key k3y-4711 not valid"}})")
                             << u"❌ Gemini API 錯誤 400：API key ••• not valid"_s;
    QTest::newRow("hangs up") << QueuedAnswer::raw("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf")
                              << u"❌ 網路錯誤：與伺服器的連線已中斷"_s;
}

void LanguageModelsTest::dictionaryAnswersOfGemini()
{
    QFETCH(QueuedAnswer, answer);
    m_server.enqueue(answer);
    QTEST(translateText(Model::Gemini, u"t"_s), "result");
}

void LanguageModelsTest::baseUrls_data()
{
    QTest::addColumn<QString>("baseUrl");
    QTest::addColumn<QString>("url"); // or the error
    const QString refused = u"相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP"_s;
    const auto row = [](const QString &baseUrl, const QString &url) {
        QTest::newRow(qPrintable(baseUrl.simplified())) << baseUrl << url;
    };
    row(u"https://ai.example/api/v1"_s, u"https://ai.example/api/v1/chat/completions"_s);
    row(u" https://ai.example/api/v1/\n"_s, u"https://ai.example/api/v1/chat/completions"_s);
    row(u"https://ai.example/api/v1//"_s, u"https://ai.example/api/v1//chat/completions"_s);
    row(u"https://ai.example"_s, u"https://ai.example/chat/completions"_s);
    row(u"https://ai.example/v1/chat/completions"_s, u"https://ai.example/v1/chat/completions"_s);
    row(u"https://ai.example/v1/chat/completions/"_s, u"https://ai.example/v1/chat/completions"_s);
    row(u"https://ai.example:8443/v1?api-version=2&x=%2F#part"_s,
        u"https://ai.example:8443/v1/chat/completions?api-version=2&x=%2F"_s);
    row(u"https://ai.example/a%2Fb%20c"_s, u"https://ai.example/a%2Fb%20c/chat/completions"_s);
    row(u"HTTPS://AI.example/v1"_s, u"https://ai.example/v1/chat/completions"_s);
    row(u"http://localhost:11434/v1"_s, u"http://localhost:11434/v1/chat/completions"_s);
    row(u"HTTP://LocalHost/v1"_s, u"http://localhost/v1/chat/completions"_s);
    row(u"http://127.0.0.1:8080"_s, u"http://127.0.0.1:8080/chat/completions"_s);
    row(u"http://[::1]:8080/v1"_s, u"http://[::1]:8080/v1/chat/completions"_s);
    for (const QString &baseUrl :
         {u""_s, u"ai.example/v1"_s, u"//ai.example/v1"_s, u"ftp://ai.example"_s, u"file:///v1"_s, u"https://"_s,
          u"https:///v1"_s, u"https:ai.example"_s, u"http://ai.example"_s, u"http://192.168.0.2:11434/v1"_s,
          u"http://127.0.0.2/v1"_s, u"http://localhost.ai.example/v1"_s, u"http://localhost@ai.example/v1"_s,
          u"http://ai.example#@localhost/"_s, u"http://localhost\\@ai.example/"_s, u"https://ai.example/a b"_s,
          u"https://ai.example:port/"_s, u"https://ai .example/"_s})
        row(baseUrl, refused);
}

void LanguageModelsTest::baseUrls()
{
    QFETCH(QString, baseUrl);
    QString outcome;
    try {
        outcome = QString::fromUtf8(chatCompletionsURL(baseUrl));
    } catch (const TranslationError &error) {
        outcome = error.failure(m_texts.manager).description;
    }
    QTEST(outcome, "url");
}

void LanguageModelsTest::textsThatAreNoUnicodeAreRefused()
{
    const QString half = u"a"_s + QChar(0xD83D);
    QCOMPARE(translateBlocks(Model::OpenAI, {half}), QStringList{failurePrefix + u"無法建立翻譯輸入"_s});
    QCOMPARE(translateBlocks(Model::Gemini, {half}), QStringList{failurePrefix + u"JSON encode error"_s});
    QVERIFY(m_server.requests().isEmpty());
}

void LanguageModelsTest::keysThatCannotBeSent()
{
    const QString key = u"k3y-4711\r\nX-Injected: 1"_s;
    for (const Model model : {Model::OpenAI, Model::Anthropic, Model::Compatible})
        QCOMPARE(translateBlocks(model, {u"0"_s}, key),
                 QStringList{failurePrefix + u"API Key 或設定含有無法傳送的字元"_s});
    QCOMPARE(translateBlocks(Model::Gemini, {u"0"_s}, key), QStringList{failurePrefix + u"Request prepare error"_s});
    QCOMPARE(translateText(Model::Gemini, u"t"_s, key), u"❌ 網路請求準備失敗"_s);
    QVERIFY(m_server.requests().isEmpty());
}

QTEST_GUILESS_MAIN(LanguageModelsTest)
#include "LanguageModelsTest.moc"
