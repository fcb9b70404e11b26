#include "MicrosoftClient.h"

#include "Json.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The service takes 50,000 characters in one request, whatever their bytes.
constexpr ChunkLimit chunkLimit{.texts = 100, .bytes = 50'000};
constexpr std::chrono::seconds requestTimeout{20};
const QString provider = u"Microsoft Translator"_s;

} // namespace

ServiceRequest microsoftRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                                const QString &region, const QString &target)
{
    const auto url =
        wireUrl(hosts.microsoft + "/translate?api-version=3.0&to=" + microsoftLanguageCode(target).toUtf8());
    if (!url)
        throw TranslationProviderError::invalidConfiguration(u"Microsoft Translator API URL 無效"_s);
    QJsonArray body;
    for (const QString &text : texts)
        body.append(QJsonObject{{u"text"_s, text}});
    return jsonRequest(*url,
                       {{"Ocp-Apim-Subscription-Key", key.toUtf8()}, {"Ocp-Apim-Subscription-Region", region.toUtf8()}},
                       jsonBytes(body), requestTimeout, provider, {key});
}

QStringList microsoftAnswer(const QByteArray &body, qsizetype count)
{
    const auto document = parseJson(body);
    if (!document || !document->isArray() || document->array().size() != count)
        throw TranslationProviderError::invalidResponse(provider);
    QStringList texts;
    for (const QJsonValue element : document->array()) {
        const QJsonValue text = element["translations"_L1][0]["text"_L1];
        if (!text.isString())
            throw TranslationProviderError::invalidResponse(provider);
        texts.append(text.toString());
    }
    return texts;
}

QStringList translateWithMicrosoft(const TranslationServices &services, const QList<TextBlock> &blocks,
                                   const QString &key, const QString &region, const QString &target)
{
    QStringList translations;
    for (const QStringList &chunk : chunksOf(textsOf(blocks), chunkLimit)) {
        const ServiceRequest request = microsoftRequest(services.hosts, chunk, key, region, target);
        translations.append(microsoftAnswer(postJSON(services, request), chunk.size()));
    }
    return translations;
}

} // namespace lucentra
