#include "CalledServices.h"
#include "Columns.h"
#include "EngineClients.h"
#include "Prompts.h"
#include "TestProgram.h"
#include "TranslationEngine.h"
#include "TranslationError.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QByteArray compact(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).toJson(QJsonDocument::Compact);
}

} // namespace

class LanguageModelsTest : public QObject, private CalledServices
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void requestsOnTheWire_data()
    {
        // headers: besides the type of the content
        // body: INSTRUCTION and USER stand for the texts
        const auto row = columns<Service, bool, QByteArray, QStringList, QByteArray>("model", "isBatch", "target",
                                                                                     "headers", "body");
        const QStringList bearer{u"Authorization: Bearer k3y-4711"_s};
        row("OpenAI, blocks", Service::OpenAI, true, "/v1/responses", bearer, compact(R"({
            "model": "m-1", "instructions": "INSTRUCTION", "input": "USER", "store": false, "max_output_tokens": 8192,
            "text": {"format": {"type": "json_schema", "name": "translation_blocks", "strict": true, "schema": {
                "type": "object", "required": ["translations"], "additionalProperties": false,
                "properties": {"translations": {"type": "array", "items": {
                    "type": "object", "required": ["id", "text"], "additionalProperties": false,
                    "properties": {"id": {"type": "integer"}, "text": {"type": "string"}}}}}}}}})"));
        row("OpenAI, text", Service::OpenAI, false, "/v1/responses", bearer, compact(R"({
            "model": "m-1", "instructions": "INSTRUCTION", "input": "USER", "store": false, "max_output_tokens": 8192})"));
        const QStringList anthropic{u"x-api-key: k3y-4711"_s, u"anthropic-version: 2023-06-01"_s};
        for (const bool isBatch : {true, false}) {
            QTest::addRow("Anthropic, %s", isBatch ? "blocks" : "text")
                << Service::Anthropic << isBatch << QByteArray("/v1/messages") << anthropic
                << compact(R"({"model": "m-1", "max_tokens": 8192, "temperature": 0.1, "system": "INSTRUCTION",
                               "messages": [{"role": "user", "content": "USER"}]})");
        }
        const QByteArray chat = R"({"model": "m-1", "temperature": 0.1, "max_tokens": 8192, "stream": false, FORMAT
            "messages": [{"role": "system", "content": "INSTRUCTION"}, {"role": "user", "content": "USER"}]})";
        row("compatible, blocks", Service::Compatible, true, "/api/v1/chat/completions", bearer,
            compact(QByteArray(chat).replace("FORMAT", R"("response_format": {"type": "json_object"},)")));
        row("compatible, text", Service::Compatible, false, "/api/v1/chat/completions", bearer,
            compact(QByteArray(chat).replace("FORMAT", "")));
        const QByteArray gemini = R"({"system_instruction": {"parts": [{"text": "INSTRUCTION"}]},
            "contents": [{"parts": [{"text": "USER"}]}], "generationConfig": CONFIG})";
        const QByteArray geminiTarget = "/v1beta/models/gemini-2.5-flash:generateContent?key=k3y-4711";
        row("Gemini, blocks", Service::Gemini, true, geminiTarget, {},
            compact(QByteArray(gemini).replace("CONFIG", R"({"temperature": 0.1,
            "maxOutputTokens": 8192, "responseMimeType": "application/json"})")));
        row("Gemini, text", Service::Gemini, false, geminiTarget, {},
            compact(QByteArray(gemini).replace("CONFIG", R"({"temperature": 0.2, "maxOutputTokens": 1024})")));
    }

    void requestsOnTheWire()
    {
        auto [model, isBatch, target, headers, body] = fetched<Service, bool, QByteArray, QStringList, QByteArray>();
        m_server.respondWith([](const ReceivedRequest &request) {
            return answerAsService(request, [](const QString &text) { return u"«%1»"_s.arg(text); });
        });
        if (isBatch)
            QCOMPARE(translate(model, {u"He said \"hi\""_s, u"\\n"_s}, u"ja"_s),
                     (QStringList{u"«He said \"hi\"»"_s, u"«\\n»"_s}));
        else
            QCOMPARE(translateText(model, u"hello"_s), u"«hello»"_s);
        const ReceivedRequest request = m_server.requests().constFirst();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.target, target);
        QCOMPARE(headersOf(request), QStringList{u"Content-Type: application/json"_s} + headers);

        QString instruction = isBatch ? blockInstruction(u"日文"_s) : dictionaryInstruction(u"日文"_s);
        if (model == Service::Gemini)
            instruction =
                isBatch ? geminiBlockInstruction(u"日文"_s) : geminiDictionaryInstruction(u"日文 (Japanese)"_s);
        const QString user =
            isBatch ? u"[{\"id\":0,\"text\":\"He said \\\"hi\\\"\"},{\"id\":1,\"text\":\"\\\\n\"}]"_s : u"hello"_s;
        const auto inJson = [](const QString &text) {
            return QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
        };
        QCOMPARE(request.body, body.replace("\"INSTRUCTION\"", inJson(instruction)).replace("\"USER\"", inJson(user)));
    }

    void theInstructionsKeepTheirWords()
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

    void whatModelsReply_data()
    {
        // elements: of the array; ELEMENTS in the text stands for the array
        // expected: joined by |; empty: no JSON
        const auto row = columns<QString, QString, QString>("elements", "text", "expected");
        const QString array = u"ELEMENTS"_s;
        const QString plain = uR"([{"id":0,"text":"A"},{"id":1,"text":"B"},{"id":2,"text":"C"}])"_s;
        row("in order", plain, array, u"A|B|C"_s);
        row("out of order", uR"([{"id":2,"text":"C"},{"id":0,"text":"A"},{"id":1,"text":"B"}])"_s, array, u"A|B|C"_s);
        row("string ids", uR"([{"id":"0","text":"A"}])"_s, array, u"0|1|2"_s);
        row("an id twice", uR"([{"id":0,"text":"A"},{"id":0,"text":"Z"}])"_s, array, u"Z|1|2"_s);
        row("a bad repetition doesn't count", uR"([{"id":0,"text":"A"},{"id":0,"text":null}])"_s, array, u"A|1|2"_s);
        row("renumbered from 1", uR"([{"id":1,"text":"A"},{"id":2,"text":"B"},{"id":3,"text":"C"}])"_s, array,
            u"0|A|B"_s);
        row("far beyond", uR"([{"id":-1,"text":"x"},{"id":1e300,"text":"x"},{"id":9007199254740993,"text":"x"}])"_s,
            array, u"0|1|2"_s);
        row("no whole numbers", uR"([{"id":0.5,"text":"x"},{"id":true,"text":"x"},{"id":null,"text":"x"}])"_s, array,
            u"0|1|2"_s);
        row("whole numbers with a point", uR"([{"id":1.0,"text":"B"}])"_s, array, u"0|B|2"_s);
        row("texts that are none",
            uR"([{"id":0,"text":5},{"id":1,"text":null},{"id":2,"text":["C"]},{"text":"x"},{"id":1}])"_s, array,
            u"0|1|2"_s);
        row("an empty translation stands", uR"([{"id":0,"text":""}])"_s, array, u"|1|2"_s);
        row("in a fence", plain, u"\n```json\nELEMENTS\n```\n"_s, u"A|B|C"_s);
        row("in a fence of capitals", plain, u"```JSON\nELEMENTS\n```"_s, u""_s);
        row("prose before", plain, u"Here you are: ELEMENTS"_s, u""_s);
        row("a trailing comma", uR"([{"id":0,"text":"A"},])"_s, array, u""_s);
        row("cut off at the limit", u"[{\"id\":0,\"text\":\"A\"},{\"id\":1,\"te"_s, array, u""_s);
        row("a refusal", plain, u"I can't help with that."_s, u""_s);
    }

    void whatModelsReply()
    {
        QFETCH(QString, elements);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QStringList sources{u"0"_s, u"1"_s, u"2"_s};
        for (const Service model : models) {
            const bool isArray = model == Service::Gemini;
            m_server.respondWith([&](const ReceivedRequest &request) {
                const QString json = isArray ? elements : u"{\"translations\":"_s + elements + u'}';
                return modelReply(request, QString(text).replace(u"ELEMENTS"_s, json));
            });
            const QString failure = isArray ? u"JSON Array parse error"_s : u"回應內容不是有效的 JSON"_s;
            QCOMPARE(translate(model, sources).join(u'|'), expected.isEmpty() ? failurePrefix + failure : expected);
        }
    }

    void answersOfAnotherForm_data()
    {
        // text: instead of a body: what the model says
        const auto row = columns<QList<Service>, QByteArray, QString>("models", "body", "text");
        const QList<Service> all(models.begin(), models.end());
        const QList<Service> inObjects = all.first(3);
        row("broken UTF-8", all, "{\"content\":[{\"type\":\"text\",\"text\":\"\xe4\xb8\"}]}", {});
        row("only the first text of an item counts", {Service::OpenAI},
            R"({"output":[{"content":[{"type":"output_text","text":5},{"type":"output_text","text":"x"}]},null]})", {});
        row("no text part", {Service::Anthropic}, R"({"content":[{"type":"tool_use","text":"x"}]})", {});
        row("the first text part has none", {Service::Anthropic},
            R"({"content":[{"type":"text","text":null},{"type":"text","text":"x"}]})", {});
        row("content is null", {Service::Compatible}, R"({"choices":[{"message":{"content":null}}]})", {});
        row("content in parts", {Service::Compatible}, R"({"choices":[{"message":{"content":[{"text":"x"}]}}]})", {});
        row("blocked", {Service::Gemini}, R"({"promptFeedback":{"blockReason":"SAFETY"}})", {});
        row("another object", inObjects, {}, uR"({"blocks":[]})"_s);
        row("an array for an object", inObjects, {}, uR"([{"id":0,"text":"A"}])"_s);
        row("an element that is no object", all, {}, uR"({"translations":["A"]})"_s);
        row("an object for an array", {Service::Gemini}, {}, uR"({"id":0,"text":"A"})"_s);
        row("an array of texts", {Service::Gemini}, {}, uR"(["A"])"_s);
    }

    void answersOfAnotherForm()
    {
        QFETCH(QList<Service>, models);
        QFETCH(QByteArray, body);
        QFETCH(QString, text);
        for (const Service model : models) {
            m_server.respondWith([&](const ReceivedRequest &request) {
                return text.isEmpty() ? QueuedAnswer::json(body) : modelReply(request, text);
            });
            QString failure = (text.isEmpty() ? labelOf(model) : u"AI 翻譯"_s) + u" 回應格式無法解析"_s;
            if (model == Service::Gemini)
                failure = text.isEmpty() ? u"Response parse error"_s : u"JSON Array parse error"_s;
            QCOMPARE(translate(model, {u"0"_s}), QStringList{failurePrefix + failure});
        }
    }

    void longPassesAreSentInSeveralRequests()
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
        for (const Service model : models) {
            m_server.reset();
            QCOMPARE(translate(model, texts), expected);
            QVERIFY(m_server.requests().size() > 1);
            m_server.reset();
            QCOMPARE(translate(model, texts.first(60)), expected.first(60));
            QCOMPARE(m_server.requests().size(), 1);
        }
    }

    void secretsOfTheAddressAreInNoMessage()
    {
        m_server.enqueue(QueuedAnswer::reply(403, R"({"message":"No: user-4711 pass%2Fword q-secret-1"})"));
        QByteArray address = m_server.origin() + "/v1?api-key=q-secret-1";
        address.replace("http://", "http://user-4711:pass%2Fword@");
        EngineRequest refused = request(Service::Compatible, {u"0"_s}, u"ja"_s, u"k3y-4711"_s);
        refused.baseUrl = QString::fromLatin1(address);
        QCOMPARE(send(refused), QStringList{failurePrefix + u"相容 API 錯誤 403：No: ••• ••• •••"_s});
    }

    void answersToATypedText()
    {
        const auto answered = [this](Service model, const QueuedAnswer &answer) {
            m_server.enqueue(answer);
            return translateText(model, u"t"_s);
        };
        // The first text is the answer.
        QCOMPARE(answered(Service::OpenAI, QueuedAnswer::json(R"({"output":[{"type":"reasoning"},{"content":[
            {"type":"summary","text":"x"},{"type":"output_text","text":" first "}]},
            {"content":[{"type":"output_text","text":"second"}]}]})")),
                 u" first "_s);
        QCOMPARE(answered(Service::Anthropic, QueuedAnswer::json(R"({"content":[{"type":"thinking","text":"x"},
            {"type":"text","text":"first"},{"type":"text","text":"x"}]})")),
                 u"first"_s);
        const auto gemini = [&](const QueuedAnswer &answer) { return answered(Service::Gemini, answer); };
        QCOMPARE(gemini(QueuedAnswer::json(R"({"candidates":[{"content":{"parts":[{"text":"\n辭典\n字典\n"}]}}]})")),
                 u"辭典\n字典"_s);
        for (const QByteArray body : {R"({"candidates":[{"content":{"parts":[]}}]})", "<html>"})
            QCOMPARE(gemini(QueuedAnswer::json(body)), u"❌ API 回應格式錯誤或金鑰無效"_s);
        QCOMPARE(gemini(QueuedAnswer::reply(400, R"({"error":{"message":"API key k3y-4711 not valid"}})")),
                 u"❌ Gemini API 錯誤 400：API key ••• not valid"_s);
        QCOMPARE(gemini(QueuedAnswer::raw("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf")),
                 u"❌ 網路錯誤：與伺服器的連線已中斷"_s);
    }

    void baseUrls()
    {
        const auto check = [&](const QString &baseUrl, const QString &url) {
            QString outcome;
            try {
                outcome = QString::fromUtf8(chatCompletionsURL(baseUrl));
            } catch (const TranslationError &error) {
                outcome = error.failure(m_texts.manager).description;
            }
            QVERIFY2(outcome == url, qPrintable(baseUrl + u" → "_s + outcome));
        };
        check(u"https://ai.example/api/v1"_s, u"https://ai.example/api/v1/chat/completions"_s);
        check(u" https://ai.example/api/v1/\n"_s, u"https://ai.example/api/v1/chat/completions"_s);
        check(u"https://ai.example/api/v1//"_s, u"https://ai.example/api/v1//chat/completions"_s);
        check(u"https://ai.example"_s, u"https://ai.example/chat/completions"_s);
        check(u"https://ai.example/v1/chat/completions"_s, u"https://ai.example/v1/chat/completions"_s);
        check(u"https://ai.example/v1/chat/completions/"_s, u"https://ai.example/v1/chat/completions"_s);
        check(u"https://ai.example:8443/v1?api-version=2&x=%2F#part"_s,
              u"https://ai.example:8443/v1/chat/completions?api-version=2&x=%2F"_s);
        check(u"https://ai.example/a%2Fb%20c"_s, u"https://ai.example/a%2Fb%20c/chat/completions"_s);
        check(u"HTTPS://AI.example/v1"_s, u"https://ai.example/v1/chat/completions"_s);
        check(u"http://localhost:11434/v1"_s, u"http://localhost:11434/v1/chat/completions"_s);
        check(u"HTTP://LocalHost/v1"_s, u"http://localhost/v1/chat/completions"_s);
        check(u"http://127.0.0.1:8080"_s, u"http://127.0.0.1:8080/chat/completions"_s);
        check(u"http://[::1]:8080/v1"_s, u"http://[::1]:8080/v1/chat/completions"_s);
        for (const QString &baseUrl :
             {u""_s, u"ai.example/v1"_s, u"//ai.example/v1"_s, u"ftp://ai.example"_s, u"file:///v1"_s, u"https://"_s,
              u"https:///v1"_s, u"https:ai.example"_s, u"http://ai.example"_s, u"http://192.168.0.2:11434/v1"_s,
              u"http://127.0.0.2/v1"_s, u"http://localhost.ai.example/v1"_s, u"http://localhost@ai.example/v1"_s,
              u"http://ai.example#@localhost/"_s, u"http://localhost\\@ai.example/"_s, u"https://ai.example/a b"_s,
              u"https://ai.example:port/"_s, u"https://ai .example/"_s})
            check(baseUrl, u"相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP"_s);
    }

    void textsThatAreNoUnicodeAreRefused()
    {
        const QString half = u"a"_s + QChar(0xD83D);
        QCOMPARE(translate(Service::OpenAI, {half}), QStringList{failurePrefix + u"無法建立翻譯輸入"_s});
        QCOMPARE(translate(Service::Gemini, {half}), QStringList{failurePrefix + u"JSON encode error"_s});
        QVERIFY(m_server.requests().isEmpty());
    }
};

static const TestClass<LanguageModelsTest> languageModelsTest;
#include "LanguageModelsTest.moc"
