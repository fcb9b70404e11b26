#include "GeminiClient.h"

#include "BlockBatch.h"
#include "Json.h"
#include "LocalizationManager.h"
#include "ModelLimits.h"
#include "Prompts.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds requestTimeout{30};
const QString label = u"Gemini"_s;

ProviderFailure geminiFailure(const QString &description)
{
    return {label, -1, description};
}

QString errorMessage(const HttpResponse &response, const QString &key, const LocalizationManager &texts)
{
    return response.body.isEmpty() ? texts.localized(u"未知錯誤"_s) : providerErrorMessage(response.body, {key}, texts);
}

QStringList translateBatch(const TranslationServices &services, const QString &key, const QList<TextBlock> &blocks,
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
        throw TranslationProviderError::requestFailed(label, response.status,
                                                      errorMessage(response, key, services.texts));
    const auto output = geminiAnswer(response.body);
    if (!output)
        throw geminiFailure(u"Response parse error"_s);
    return parseGeminiBlocks(*output, blocks);
}

QJsonObject generationConfig(bool isStructured)
{
    if (isStructured)
        return {{u"temperature"_s, batchTemperature},
                {u"maxOutputTokens"_s, mostOutputTokens},
                {u"responseMimeType"_s, u"application/json"_s}};
    return {{u"temperature"_s, 0.2}, {u"maxOutputTokens"_s, 1024}};
}

} // namespace

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
    return jsonRequest(*url, {}, jsonBytes(body), requestTimeout, label, {key});
}

std::optional<QString> geminiAnswer(const QByteArray &body)
{
    const auto document = parseJson(body);
    const QJsonValue text =
        document ? (*document)["candidates"_L1][0]["content"_L1]["parts"_L1][0]["text"_L1] : QJsonValue();
    if (!text.isString())
        return std::nullopt;
    return text.toString();
}

QStringList parseGeminiBlocks(const QString &output, const QList<TextBlock> &blocks)
{
    const auto document = parseJson(withoutFences(output).toUtf8());
    const auto elements = document && document->isArray() ? objectsIn(document->array()) : std::nullopt;
    if (!elements)
        throw geminiFailure(u"JSON Array parse error"_s);
    return matchedTranslations(*elements, blocks);
}

QStringList translateBlocksWithGemini(const TranslationServices &services, const QString &key,
                                      const QList<TextBlock> &blocks, const QString &target)
{
    QStringList translations;
    for (const QList<TextBlock> &batch : blockBatches(blocks))
        translations.append(translateBatch(services, key, batch, target));
    return translations;
}

TextTranslation translateTextWithGemini(const TranslationServices &services, const QString &key, const QString &text,
                                        const QString &target)
{
    const LocalizationManager &texts = services.texts;
    const auto failed = [](const QString &message) { return TextTranslation{.text = message, .isMessage = true}; };
    const ModelMessage message{.instruction = geminiDictionaryInstruction(dictionaryLanguageName(target)),
                               .userText = text};
    const auto request = geminiRequest(services.hosts, key, message);
    if (!request)
        return failed(texts.localized(u"❌ 網路請求準備失敗"_s));
    try {
        const HttpResponse response = services.send(request->http);
        if (!isSuccess(response))
            return failed(
                texts.formatted(u"❌ Gemini API 錯誤 %d：%@"_s, response.status, errorMessage(response, key, texts)));
        if (const auto output = geminiAnswer(response.body))
            return {.text = output->trimmed()};
        return failed(texts.localized(u"❌ API 回應格式錯誤或金鑰無效"_s));
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::cancelled)
            throw;
        return failed(texts.formatted(u"❌ 網路錯誤：%@"_s, error.failure(texts).description));
    }
}

} // namespace lucentra
