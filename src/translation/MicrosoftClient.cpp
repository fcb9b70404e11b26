#include "EngineClients.h"
#include "Json.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The service takes 50,000 characters per request; counting bytes stays below that.
constexpr ChunkLimit microsoftLimit{.texts = 100, .bytes = 50'000};
constexpr std::chrono::seconds microsoftTimeout{20};
const QString microsoftProvider = u"Microsoft Translator"_s;

ServiceRequest microsoftRequest(const ServiceHosts &hosts, const QStringList &texts, const EngineRequest &request)
{
    const QByteArray url =
        hosts.microsoft + "/translate?api-version=3.0&to=" + microsoftLanguageCode(request.target).toUtf8();
    QJsonArray body;
    for (const QString &text : texts)
        body.append(QJsonObject{{u"text"_s, text}});
    const Headers headers{{"Ocp-Apim-Subscription-Key", request.key.toUtf8()},
                          {"Ocp-Apim-Subscription-Region", request.region.toUtf8()}};
    return jsonRequest(url, headers, jsonBytes(body), microsoftTimeout, microsoftProvider, {request.key});
}

} // namespace

QStringList microsoftAnswer(const QByteArray &body, qsizetype count)
{
    const QJsonDocument answer = jsonAnswer(body);
    const QJsonArray elements = answer.array();
    if (!answer.isArray() || elements.size() != count)
        throw invalidResponse(microsoftProvider);
    QStringList texts;
    for (const QJsonValue element : elements) {
        const QJsonValue text = element["translations"_L1][0]["text"_L1];
        if (!text.isString())
            throw invalidResponse(microsoftProvider);
        texts.append(text.toString());
    }
    return texts;
}

QStringList translateWithMicrosoft(const TranslationServices &services, const EngineRequest &request)
{
    QStringList translations;
    for (const QStringList &chunk : chunksOf(request.texts, microsoftLimit))
        translations += microsoftAnswer(postJSON(services, microsoftRequest(services.hosts, chunk, request)),
                                        chunk.size());
    return translations;
}

} // namespace lucentra
