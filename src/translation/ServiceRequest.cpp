#include "ServiceRequest.h"

#include "Json.h"
#include "LocalizationManager.h"
#include "Text.h"

#include <QHash>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds postTimeout{45};
constexpr qsizetype longestPlainMessage = 300;
constexpr qsizetype longestMessage = 4000;

// Every form in which a service may echo one character of a key: as it is, in a URL, in a JSON string, in HTML.
QString echoesOf(char32_t character)
{
    const QString plain = QString::fromUcs4(&character, 1);
    QStringList forms{QRegularExpression::escape(plain), u"\\\\+"_s + QRegularExpression::escape(plain),
                      u"&#0*%1;"_s.arg(uint(character)), u"(?i:&#x0*%1;)"_s.arg(QString::number(uint(character), 16))};
    QString inUrl;
    for (const char byte : plain.toUtf8())
        inUrl += u"%"_s + QString::number(uchar(byte), 16).rightJustified(2, u'0');
    QString inJson;
    for (const QChar unit : plain)
        inJson += u"\\\\+u"_s + QString::number(unit.unicode(), 16).rightJustified(4, u'0');
    forms << u"(?i:%1|%2)"_s.arg(inUrl, inJson);
    static const QHash<char32_t, QString> named{
        {U'&', u"&amp;"_s}, {U'<', u"&lt;"_s}, {U'>', u"&gt;"_s}, {U'"', u"&quot;"_s}, {U'\'', u"&apos;"_s}};
    if (named.contains(character))
        forms.prepend(named[character]);
    return u"(?:"_s + forms.join(u'|') + u")"_s;
}

QString withoutKey(QString message, const QString &key)
{
    if (key.isEmpty())
        return message;
    const QString hidden = u"•••"_s;
    message.replace(key, hidden);
    QString pattern;
    for (const char32_t character : key.toUcs4())
        pattern += echoesOf(character);
    const QRegularExpression echo(pattern, QRegularExpression::UseUnicodePropertiesOption);
    // A key too long for a pattern is no service's key; rather no message than one that may hold a part of it.
    return echo.isValid() ? message.replace(echo, hidden) : hidden;
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
