#include "EngineClients.h"
#include "HttpSession.h"
#include "Json.h"
#include "TranslationEngine.h"

#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString compatibleLabel = u"相容 API"_s;

/// The key, and what the address itself may hold of that kind.
QStringList secretsOf(const EngineRequest &request)
{
    const QUrl url(request.baseUrl.trimmed(), QUrl::StrictMode);
    QStringList secrets{request.key, url.userName(), url.password()};
    for (const auto &[name, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded))
        secrets.append(value);
    return secrets;
}

} // namespace

QByteArray chatCompletionsURL(const QString &baseUrl)
{
    QUrl url(baseUrl.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || !isProtected(url))
        throw invalidConfiguration(u"相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP"_s);
    QString path = url.path(QUrl::FullyEncoded);
    if (path.endsWith(u'/'))
        path.chop(1);
    if (!path.endsWith(u"/chat/completions"))
        path += u"/chat/completions"_s;
    url.setPath(path, QUrl::TolerantMode); // what is encoded stays so
    const auto encoded = wireUrl(url.toEncoded(QUrl::RemoveFragment));
    if (!encoded)
        throw invalidConfiguration(u"相容 API URL 無效"_s);
    return *encoded;
}

namespace {

ServiceRequest compatibleRequest(const EngineRequest &request, const ModelMessage &message)
{
    const QJsonObject system{{u"role"_s, u"system"_s}, {u"content"_s, message.instruction}};
    const QJsonObject user{{u"role"_s, u"user"_s}, {u"content"_s, message.userText}};
    QJsonObject body{{u"model"_s, request.model},
                     {u"messages"_s, QJsonArray{system, user}},
                     {u"temperature"_s, batchTemperature},
                     {u"max_tokens"_s, mostOutputTokens},
                     {u"stream"_s, false}};
    if (message.isStructured)
        body.insert(u"response_format"_s, QJsonObject{{u"type"_s, u"json_object"_s}});
    return jsonRequest(chatCompletionsURL(request.baseUrl), {{"Authorization", "Bearer " + request.key.toUtf8()}},
                       body, compatibleLabel, secretsOf(request));
}

} // namespace

QString compatibleAnswer(const QByteArray &body)
{
    const QJsonValue text = jsonAnswer(body)["choices"_L1][0]["message"_L1]["content"_L1];
    if (!text.isString())
        throw invalidResponse(compatibleLabel);
    return text.toString();
}

QString sendCompatible(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message)
{
    return compatibleAnswer(postJSON(services, compatibleRequest(request, message)));
}

} // namespace lucentra
