#include "GoogleFreeClient.h"

#include "Json.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr qsizetype chunkSize = 6;
constexpr qsizetype waveSize = 3;
constexpr std::chrono::seconds requestTimeout{15};
const QString provider = u"Google 免費翻譯"_s;
const QString separator = u"||||"_s;

/// Whether the text couldn't be told from the separators around it.
bool resemblesSeparator(const QString &text)
{
    return text.contains(separator) || text.startsWith(u'|') || text.endsWith(u'|');
}

/// Runs of texts that one request joins.
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

/// Sends the requests side by side and returns the answers in the order of the requests.
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
            throw TranslationProviderError::invalidResponse(provider);
        throw;
    }
    return answers;
}

} // namespace

std::optional<ServiceRequest> googleFreeRequest(const ServiceHosts &hosts, const QStringList &texts,
                                                const QString &target)
{
    const QString joined = texts.join(separator);
    if (!joined.isValidUtf16())
        return std::nullopt;
    // What a query may hold as it is, but for "&", "=" and "+", which would split or alter the value.
    const QByteArray query = QUrl::toPercentEncoding(joined, "!$'()*,/:;?@");
    const auto url =
        wireUrl(hosts.googleFree + "/translate_a/single?client=gtx&sl=auto&tl=" + googleLanguageCode(target).toUtf8() +
                "&dt=t&q=" + query);
    if (!url)
        return std::nullopt;
    return ServiceRequest{.http = {.method = "GET",
                                   .url = *url,
                                   .headers = {{"User-Agent", "Mozilla/5.0"}},
                                   .body = {},
                                   .timeout = requestTimeout},
                          .provider = provider,
                          .secrets = {}};
}

QStringList googleFreeAnswer(const QByteArray &body, qsizetype count)
{
    const auto document = parseJson(body);
    const QJsonValue sentences = document ? (*document)[0] : QJsonValue();
    if (!sentences.isArray())
        throw TranslationProviderError::invalidResponse(provider);
    QString translation;
    for (const QJsonValue sentence : sentences.toArray()) {
        if (!sentence.isArray())
            throw TranslationProviderError::invalidResponse(provider);
        translation += sentence[0].toString();
    }
    // Of a text that was sent alone every separator is its own.
    QStringList pieces = count == 1 ? QStringList{translation} : translation.split(separator);
    if (pieces.size() != count)
        throw TranslationProviderError::invalidResponse(provider);
    for (QString &piece : pieces)
        piece = piece.trimmed();
    return pieces;
}

QStringList translateWithGoogleFree(const TranslationServices &services, const QList<TextBlock> &blocks,
                                    const QString &target)
{
    const QList<QStringList> chunks = joinableChunks(textsOf(blocks));
    QStringList translations;
    for (qsizetype start = 0; start < chunks.size(); start += waveSize) {
        const QList<QStringList> wave = chunks.mid(start, waveSize);
        QList<ServiceRequest> requests;
        for (const QStringList &chunk : wave) {
            const auto request = googleFreeRequest(services.hosts, chunk, target);
            if (!request)
                throw TranslationProviderError::invalidResponse(provider);
            requests.append(*request);
        }
        for (const QStringList &answer : answersOf(services, requests, wave))
            translations.append(answer);
    }
    return translations;
}

} // namespace lucentra
