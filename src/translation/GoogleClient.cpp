#include "EngineClients.h"
#include "Json.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The service takes 100,000 bytes per request.
constexpr ChunkLimit cloudLimit{.texts = 128, .bytes = 95'000};
constexpr std::chrono::seconds cloudTimeout{20};
const QString cloudProvider = u"Google Cloud"_s;

constexpr qsizetype chunkSize = 6;
constexpr qsizetype waveSize = 3;
constexpr std::chrono::seconds freeTimeout{15};
const QString freeProvider = u"Google 免費翻譯"_s;
const QString separator = u"||||"_s;

/// Whether the text couldn't be distinguished from the separators around it.
bool resemblesSeparator(const QString &text)
{
    return text.contains(separator) || text.startsWith(u'|') || text.endsWith(u'|');
}

/// The texts that one request joins.
QList<QStringList> joinableChunks(const QStringList &texts)
{
    QList<QStringList> chunks;
    bool mayAppend = false;
    for (const QString &text : texts) {
        const bool isAlone = resemblesSeparator(text);
        if (!mayAppend || isAlone || chunks.last().size() == chunkSize)
            chunks.append(QStringList());
        chunks.last().append(text);
        mayAppend = !isAlone;
    }
    return chunks;
}

/// Sends the requests concurrently and returns the answers in the order of the requests.
QList<QStringList> answersOf(const TranslationServices &services, const QList<ServiceRequest> &requests,
                             const QList<QStringList> &chunks)
{
    QList<HttpRequest> wave;
    for (const ServiceRequest &request : requests)
        wave.append(request.http);
    QList<QStringList> answers(requests.size());
    try {
        if (services.beforeRequest)
            services.beforeRequest();
        services.http.sendTogether(wave, [&](qsizetype i, const HttpResponse &response) {
            answers[i] = googleFreeAnswer(acceptedBody(response, requests[i], services.texts), chunks[i].size());
        });
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw invalidResponse(freeProvider);
        throw;
    }
    return answers;
}

ServiceRequest googleFreeRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &target)
{
    const QString joined = texts.join(separator);
    // The characters that a query may contain stay as they are, except for "&", "=" and "+", which would split or alter
    // the value.
    const QByteArray query = QUrl::toPercentEncoding(joined, "!$'()*,/:;?@");
    const auto url =
        wireUrl(hosts.googleFree + "/translate_a/single?client=gtx&sl=auto&tl=" + googleLanguageCode(target).toUtf8() +
                "&dt=t&q=" + query);
    if (!url || !joined.isValidUtf16())
        throw invalidResponse(freeProvider);
    return {.http = {.method = "GET",
                     .url = *url,
                     .headers = {{"User-Agent", "Mozilla/5.0"}},
                     .body = {},
                     .timeout = freeTimeout},
            .provider = freeProvider,
            .secrets = {}};
}

ServiceRequest googleCloudRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &target,
                                  const QString &key)
{
    const QJsonObject body{{u"q"_s, QJsonArray::fromStringList(texts)},
                           {u"target"_s, googleLanguageCode(target)},
                           {u"format"_s, u"text"_s}};
    return jsonRequest(hosts.googleCloud + "/language/translate/v2?key=" + key.toUtf8(), {}, jsonBytes(body),
                       cloudTimeout, cloudProvider, {key});
}

QStringList translateFreely(const TranslationServices &services, const EngineRequest &translation)
{
    const QList<QStringList> chunks = joinableChunks(translation.texts);
    QStringList translations;
    for (qsizetype start = 0; start < chunks.size(); start += waveSize) {
        const QList<QStringList> wave = chunks.mid(start, waveSize);
        QList<ServiceRequest> requests;
        for (const QStringList &chunk : wave)
            requests.append(googleFreeRequest(services.hosts, chunk, translation.target));
        for (const QStringList &answer : answersOf(services, requests, wave))
            translations.append(answer);
    }
    return translations;
}

QStringList translateInCloud(const TranslationServices &services, const EngineRequest &request)
{
    QStringList translations;
    for (const QStringList &chunk : chunksOf(request.texts, cloudLimit)) {
        const ServiceRequest post = googleCloudRequest(services.hosts, chunk, request.target, request.key);
        translations += googleCloudAnswer(postJSON(services, post), chunk.size());
    }
    return translations;
}

} // namespace

QStringList googleFreeAnswer(const QByteArray &body, qsizetype count)
{
    const QJsonValue sentences = jsonAnswer(body)[0];
    if (!sentences.isArray())
        throw invalidResponse(freeProvider);
    QString translation;
    for (const QJsonValue sentence : sentences.toArray()) {
        if (!sentence.isArray())
            throw invalidResponse(freeProvider);
        translation += sentence[0].toString();
    }
    // In a text that was sent alone, every separator is the text's own.
    QStringList pieces = count == 1 ? QStringList{translation} : translation.split(separator);
    if (pieces.size() != count)
        throw invalidResponse(freeProvider);
    for (QString &piece : pieces)
        piece = piece.trimmed();
    return pieces;
}

QStringList googleCloudAnswer(const QByteArray &body, qsizetype count)
{
    const QJsonValue translations = jsonAnswer(body)["data"_L1]["translations"_L1];
    QStringList texts;
    for (const QJsonValue translation : translations.toArray()) {
        if (const QJsonValue text = translation["translatedText"_L1]; text.isString())
            texts.append(text.toString());
    }
    if (!translations.isArray() || translations.toArray().size() != count || texts.size() != count)
        throw invalidResponse(cloudProvider);
    return texts;
}

QStringList translateWithGoogle(const TranslationServices &services, const EngineRequest &request)
{
    return request.key.isEmpty() ? translateFreely(services, request) : translateInCloud(services, request);
}

} // namespace lucentra
