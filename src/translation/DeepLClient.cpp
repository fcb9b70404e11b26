#include "EngineClients.h"
#include "Json.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString deepLProvider = u"DeepL"_s;
/// The service's limits per request; the whole body may have 128 KiB.
constexpr ChunkLimit deepLLimit{.texts = 50, .bytes = 120'000};

ServiceRequest deepLRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                            const QString &target)
{
    const QByteArray &host = key.endsWith(":fx"_L1) ? hosts.deepLFree : hosts.deepL;
    const QJsonObject body{{u"text"_s, QJsonArray::fromStringList(texts)},
                           {u"target_lang"_s, deepLLanguageCode(target)},
                           {u"preserve_formatting"_s, true},
                           {u"model_type"_s, u"prefer_quality_optimized"_s}};
    return jsonRequest(host + "/v2/translate", {{"Authorization", "DeepL-Auth-Key " + key.toUtf8()}}, body,
                       deepLProvider, {key});
}

} // namespace

QStringList deepLAnswer(const QByteArray &body, const QStringList &sources)
{
    const QJsonValue translations = jsonAnswer(body)["translations"_L1];
    if (!translations.isArray() || translations.toArray().size() != sources.size())
        throw invalidResponse(deepLProvider);
    QStringList texts;
    for (qsizetype i = 0; i < sources.size(); ++i)
        texts.append(translations[i]["text"_L1].toString(sources[i]));
    return texts;
}

QStringList translateWithDeepL(const TranslationServices &services, const EngineRequest &request)
{
    QList<QStringList> chunks = chunksOf(request.texts, deepLLimit);
    if (chunks.isEmpty())
        chunks.append(QStringList()); // the service is asked all the same
    QStringList translations;
    for (const QStringList &chunk : chunks)
        translations += deepLAnswer(
            postJSON(services, deepLRequest(services.hosts, chunk, request.key, request.target)), chunk);
    return translations;
}

} // namespace lucentra
