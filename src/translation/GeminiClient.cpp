#include "EngineClients.h"
#include "Json.h"
#include "LocalizationManager.h"
#include "Prompts.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds geminiTimeout{30};
const QString geminiLabel = u"Gemini"_s;

TranslationError geminiFailure(const QString &description)
{
    return {geminiLabel, -1, description};
}

QString errorMessage(const HttpResponse &response, const QString &key, const LocalizationManager &texts)
{
    return response.body.isEmpty() ? texts.localized(u"未知錯誤"_s) : providerErrorMessage(response.body, {key}, texts);
}

QJsonObject generationConfig(bool isStructured)
{
    if (isStructured)
        return {{u"temperature"_s, batchTemperature},
                {u"maxOutputTokens"_s, mostOutputTokens},
                {u"responseMimeType"_s, u"application/json"_s}};
    return {{u"temperature"_s, 0.2}, {u"maxOutputTokens"_s, 1024}};
}

std::optional<ServiceRequest> geminiRequest(const ServiceHosts &hosts, const QString &key, const ModelMessage &message)
{
    const auto url = wireUrl(hosts.gemini + "/v1beta/models/gemini-2.5-flash:generateContent?key=" + key.toUtf8());
    if (!url)
        return std::nullopt;
    const auto parts = [](const QString &text) {
        return QJsonObject{{u"parts"_s, QJsonArray{QJsonObject{{u"text"_s, text}}}}};
    };
    const QJsonObject body{{u"system_instruction"_s, parts(message.instruction)},
                           {u"contents"_s, QJsonArray{parts(message.userText)}},
                           {u"generationConfig"_s, generationConfig(message.isStructured)}};
    return jsonRequest(*url, {}, jsonBytes(body), geminiTimeout, geminiLabel, {key});
}

QStringList translateBatch(const TranslationServices &services, const QString &key, const QStringList &blocks,
                           const QString &target)
{
    const auto input = blockBatchInput(blocks);
    if (!input)
        throw geminiFailure(u"JSON encode error"_s);
    const ModelMessage message{
        .instruction = geminiBlockInstruction(promptLanguageName(target)), .userText = *input, .isStructured = true};
    const auto request = geminiRequest(services.hosts, key, message);
    if (!request)
        throw geminiFailure(u"Request prepare error"_s);
    const HttpResponse response = services.send(request->http);
    if (!isSuccess(response))
        throw requestFailed(geminiLabel, response.status, errorMessage(response, key, services.texts));
    const auto output = geminiAnswer(response.body);
    if (!output)
        throw geminiFailure(u"Response parse error"_s);
    return parseGeminiBlocks(*output, blocks);
}

/// A failure's answer to typed text is its own.
QString translateTyped(const TranslationServices &services, const EngineRequest &typed)
{
    const LocalizationManager &texts = services.texts;
    const ModelMessage message{.instruction = geminiDictionaryInstruction(dictionaryLanguageName(typed.target)),
                               .userText = typed.texts.value(0)};
    const auto request = geminiRequest(services.hosts, typed.key, message);
    if (!request)
        throw TypedTextError(texts.localized(u"❌ 網路請求準備失敗"_s));
    try {
        const HttpResponse response = services.send(request->http);
        if (!isSuccess(response))
            throw TypedTextError(texts.formatted(u"❌ Gemini API 錯誤 %d：%@"_s, response.status,
                                                 errorMessage(response, typed.key, texts)));
        if (const auto output = geminiAnswer(response.body))
            return output->trimmed();
        throw TypedTextError(texts.localized(u"❌ API 回應格式錯誤或金鑰無效"_s));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::cancelled)
            throw;
        throw TypedTextError(texts.formatted(u"❌ 網路錯誤：%@"_s, error.failure(texts).description));
    }
}

} // namespace

std::optional<QString> geminiAnswer(const QByteArray &body)
{
    const QJsonValue text = jsonAnswer(body)["candidates"_L1][0]["content"_L1]["parts"_L1][0]["text"_L1];
    if (!text.isString())
        return std::nullopt;
    return text.toString();
}

QStringList parseGeminiBlocks(const QString &output, const QStringList &sources)
{
    const auto document = parseJson(withoutFences(output).toUtf8());
    const auto elements = document && document->isArray() ? objectsIn(document->array()) : std::nullopt;
    if (!elements)
        throw geminiFailure(u"JSON Array parse error"_s);
    return matchedTranslations(*elements, sources);
}

QStringList translateWithGemini(const TranslationServices &services, const EngineRequest &request)
{
    if (request.isTyped)
        return {translateTyped(services, request)};
    QStringList translations;
    for (const QStringList &batch : blockBatches(request.texts))
        translations += translateBatch(services, request.key, batch, request.target);
    return translations;
}

} // namespace lucentra
