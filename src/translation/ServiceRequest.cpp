#include "ServiceRequest.h"

#include "Json.h"
#include "LocalizationManager.h"
#include "Text.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds postTimeout{45};
constexpr qsizetype longestPlainMessage = 300;
constexpr qsizetype longestMessage = 4000;
/// Shorter texts aren't keys of services, and may be parts of words.
constexpr qsizetype shortestSecret = 8;

/// A pattern for every form in which a service may echo a character of a key: plain, in a URL, in JSON, in HTML.
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

bool isPartOfToken(QChar c)
{
    return c.isLetterOrNumber() || c.isSurrogate() || c == u'_' || c == u'-';
}

/// Replaces every token that contains the secret.
QString withoutSecret(const QString &message, const QString &secret)
{
    const QString hidden = u"•••"_s;
    QString pattern;
    for (const char32_t character : secret.toUcs4())
        pattern += echoesOf(character);
    const QRegularExpression echo(pattern, QRegularExpression::UseUnicodePropertiesOption);
    // No service has a key that is too long for a pattern. Showing no message is safer than showing a part of the key.
    if (!echo.isValid())
        return hidden;
    QString result;
    qsizetype copied = 0;
    for (auto matches = echo.globalMatch(message); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        qsizetype start = match.capturedStart();
        qsizetype end = match.capturedEnd();
        while (start > copied && isPartOfToken(message[start - 1]))
            --start;
        while (end < message.size() && isPartOfToken(message[end]))
            ++end;
        if (end <= copied)
            continue; // within the previous token
        result += QStringView(message).sliced(copied, std::max(start, copied) - copied);
        result += hidden;
        copied = end;
    }
    result += QStringView(message).sliced(copied);
    return result;
}

QString firstUnits(const QString &text, qsizetype count)
{
    QString start = text.left(count);
    if (start.size() < text.size() && !start.isEmpty() && start.back().isHighSurrogate())
        start.chop(1);
    return start;
}

/// The part of a message that is shown, without the secrets.
QString shownMessage(const QString &message, const QStringList &secrets)
{
    constexpr qsizetype mostSearched = 4 * longestMessage; // the rest isn't shown
    QString shown = firstUnits(message, mostSearched);
    for (const QString &secret : secrets) {
        if (secret.size() >= shortestSecret)
            shown = withoutSecret(shown, secret);
    }
    return firstUnits(shown, longestMessage);
}

} // namespace

ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QByteArray &body,
                           std::chrono::milliseconds timeout, const QString &provider, const QStringList &secrets)
{
    const auto encoded = wireUrl(url);
    if (!encoded)
        throw invalidUrl(provider);
    return {.http = {.method = "POST",
                     .url = *encoded,
                     .headers = Headers{{"Content-Type", "application/json"}} + headers,
                     .body = body,
                     .timeout = timeout},
            .provider = provider,
            .secrets = secrets};
}

ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QJsonObject &body,
                           const QString &provider, const QStringList &secrets)
{
    return jsonRequest(url, headers, jsonBytes(body), postTimeout, provider, secrets);
}

HttpResponse TranslationServices::send(const HttpRequest &request) const
{
    if (beforeRequest)
        beforeRequest();
    return http.send(request);
}

QByteArray postJSON(const TranslationServices &services, const ServiceRequest &request)
{
    try {
        return acceptedBody(services.send(request.http), request, services.texts);
    } catch (const TransportError &error) {
        if (error.kind() == TransportError::Kind::notHttp)
            throw invalidResponse(request.provider);
        throw;
    }
}

QByteArray acceptedBody(const HttpResponse &response, const ServiceRequest &request, const LocalizationManager &texts)
{
    if (!isSuccess(response))
        throw requestFailed(request.provider, response.status,
                            providerErrorMessage(response.body, request.secrets, texts));
    return response.body;
}

bool isSuccess(const HttpResponse &response)
{
    return response.status >= 200 && response.status <= 299;
}

QJsonDocument jsonAnswer(const QByteArray &body)
{
    return parseJson(body).value_or(QJsonDocument());
}

QString providerErrorMessage(const QByteArray &body, const QStringList &secrets, const LocalizationManager &texts)
{
    const auto document = parseJson(body);
    if (document && document->isObject()) {
        for (const QJsonValue &message : {(*document)["error"_L1]["message"_L1], (*document)["message"_L1]}) {
            if (message.isString())
                return shownMessage(message.toString(), secrets);
        }
        return texts.localized(u"請檢查 API Key、模型名稱與服務設定"_s);
    }
    if (const auto text = decodeUtf8(body))
        return firstCharacters(shownMessage(*text, secrets), longestPlainMessage);
    return texts.localized(u"未知錯誤"_s);
}

QList<QStringList> chunksOf(const QStringList &texts, const ChunkLimit &limit)
{
    QList<QStringList> chunks;
    qsizetype bytes = 0;
    for (const QString &text : texts) {
        const qsizetype size = jsonBytes(QJsonArray{text}).size();
        if (chunks.isEmpty() || chunks.last().size() == limit.texts || bytes + size > limit.bytes) {
            chunks.append(QStringList());
            bytes = 0;
        }
        chunks.last().append(text);
        bytes += size;
    }
    return chunks;
}

} // namespace lucentra
