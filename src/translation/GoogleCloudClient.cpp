#include "GoogleCloudClient.h"

#include "Json.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The service takes 100,000 bytes in one request.
constexpr ChunkLimit chunkLimit{.texts = 128, .bytes = 95'000};
constexpr std::chrono::seconds requestTimeout{20};
const QString provider = u"Google Cloud"_s;

} // namespace

ServiceRequest googleCloudRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &target,
                                  const QString &key)
{
    const auto url = wireUrl(hosts.googleCloud + "/language/translate/v2?key=" + key.toUtf8());
    if (!url)
        throw TranslationProviderError::invalidConfiguration(u"Google Cloud API URL 無效"_s);
    const QJsonObject body{{u"q"_s, QJsonArray::fromStringList(texts)},
                           {u"target"_s, googleLanguageCode(target)},
                           {u"format"_s, u"text"_s}};
    return jsonRequest(*url, {}, jsonBytes(body), requestTimeout, provider, {key});
}

QStringList googleCloudAnswer(const QByteArray &body, qsizetype count)
{
    const auto document = parseJson(body);
    const QJsonValue translations = document ? (*document)["data"_L1]["translations"_L1] : QJsonValue();
    QStringList texts;
    for (const QJsonValue translation : translations.toArray()) {
        if (const QJsonValue text = translation["translatedText"_L1]; text.isString())
            texts.append(text.toString());
    }
    if (!translations.isArray() || translations.toArray().size() != count || texts.size() != count)
        throw TranslationProviderError::invalidResponse(provider);
    return texts;
}

QStringList translateWithGoogleCloud(const TranslationServices &services, const QList<TextBlock> &blocks,
                                     const QString &target, const QString &key)
{
    QStringList translations;
    for (const QStringList &chunk : chunksOf(textsOf(blocks), chunkLimit)) {
        const ServiceRequest request = googleCloudRequest(services.hosts, chunk, target, key);
        translations.append(googleCloudAnswer(postJSON(services, request), chunk.size()));
    }
    return translations;
}

} // namespace lucentra
