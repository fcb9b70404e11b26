#include "EngineClients.h"
#include "Json.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString claudeLabel = u"Claude"_s;

ServiceRequest anthropicRequest(const ServiceHosts &hosts, const EngineRequest &request, const ModelMessage &message)
{
    const QJsonObject user{{u"role"_s, u"user"_s}, {u"content"_s, message.userText}};
    const QJsonObject body{{u"model"_s, request.model},
                           {u"max_tokens"_s, mostOutputTokens},
                           {u"temperature"_s, batchTemperature},
                           {u"system"_s, message.instruction},
                           {u"messages"_s, QJsonArray{user}}};
    return jsonRequest(hosts.anthropic + "/v1/messages",
                       {{"x-api-key", request.key.toUtf8()}, {"anthropic-version", "2023-06-01"}}, body, claudeLabel,
                       {request.key});
}

} // namespace

QString anthropicAnswer(const QByteArray &body)
{
    const QJsonValue text = firstOfType(jsonAnswer(body)["content"_L1], u"text"_s)["text"_L1];
    if (!text.isString())
        throw invalidResponse(claudeLabel);
    return text.toString();
}

QString sendAnthropic(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message)
{
    return anthropicAnswer(postJSON(services, anthropicRequest(services.hosts, request, message)));
}

} // namespace lucentra
