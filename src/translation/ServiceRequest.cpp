#include "ServiceRequest.h"

#include "Json.h"
#include "LocalizationManager.h"
#include "Text.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds postTimeout{45};
constexpr qsizetype longestPlainMessage = 300;
constexpr qsizetype longestMessage = 4000;

QString withoutKey(QString message, const QString &key)
{
    if (key.isEmpty())
        return message;
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(key));
    return message.replace(key, u"•••"_s).replace(encoded, u"•••"_s);
}

} // namespace

ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QByteArray &body,
                           std::chrono::milliseconds timeout, const QString &provider, const QString &key)
{
    return {.http = {.method = "POST",
                     .url = url,
                     .headers = Headers{{"Content-Type", "application/json"}} + headers,
                     .body = body,
                     .timeout = timeout},
            .provider = provider,
            .key = key};
}

ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QJsonObject &body,
                           const QString &provider, const QString &key)
{
    return jsonRequest(url, headers, jsonBytes(body), postTimeout, provider, key);
}

QByteArray postJSON(const TranslationServices &services, const ServiceRequest &request)
{
    try {
        return acceptedBody(services.http.send(request.http), request, services.texts);
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw TranslationProviderError::invalidResponse(request.provider);
        throw;
    }
}

QByteArray acceptedBody(const HttpResponse &response, const ServiceRequest &request, const LocalizationManager &texts)
{
    if (!isSuccess(response))
        throw TranslationProviderError::requestFailed(request.provider, response.status,
                                                      providerErrorMessage(response.body, request.key, texts));
    return response.body;
}

bool isSuccess(const HttpResponse &response)
{
    return response.status >= 200 && response.status <= 299;
}

QString providerErrorMessage(const QByteArray &body, const QString &key, const LocalizationManager &texts)
{
    const auto document = parseJson(body);
    if (document && document->isObject()) {
        for (const QJsonValue &message : {(*document)["error"_L1]["message"_L1], (*document)["message"_L1]}) {
            if (message.isString())
                return withoutKey(message.toString(), key).left(longestMessage);
        }
        return texts.localized(u"請檢查 API Key、模型名稱與服務設定"_s);
    }
    if (const auto text = decodeUtf8(body))
        return firstCharacters(withoutKey(*text, key), longestPlainMessage);
    return texts.localized(u"未知錯誤"_s);
}

QStringList textsOf(const QList<TextBlock> &blocks)
{
    QStringList texts;
    texts.reserve(blocks.size());
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts;
}

QList<QStringList> chunksOf(const QStringList &texts, qsizetype size)
{
    QList<QStringList> chunks;
    for (qsizetype start = 0; start < texts.size(); start += size)
        chunks.append(texts.mid(start, size));
    return chunks;
}

} // namespace lucentra
