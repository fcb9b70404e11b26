#include "EngineClients.h"
#include "Json.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString openAILabel = u"OpenAI"_s;

/// {"translations": [{"id": integer, "text": string}, …]} and nothing else.
QJsonObject translationSchema()
{
    const auto typed = [](const QString &type) { return QJsonObject{{u"type"_s, type}}; };
    const auto closedObject = [](const QJsonObject &properties, const QStringList &order) {
        return QJsonObject{{u"type"_s, u"object"_s},
                           {u"properties"_s, properties},
                           {u"required"_s, QJsonArray::fromStringList(order)},
                           {u"additionalProperties"_s, false}};
    };
    const QJsonObject item =
        closedObject({{u"id"_s, typed(u"integer"_s)}, {u"text"_s, typed(u"string"_s)}}, {u"id"_s, u"text"_s});
    return closedObject({{u"translations"_s, QJsonObject{{u"type"_s, u"array"_s}, {u"items"_s, item}}}},
                        {u"translations"_s});
}

ServiceRequest openAIRequest(const ServiceHosts &hosts, const EngineRequest &request, const ModelMessage &message)
{
    QJsonObject body{{u"model"_s, request.model},
                     {u"instructions"_s, message.instruction},
                     {u"input"_s, message.userText},
                     {u"store"_s, false},
                     {u"max_output_tokens"_s, mostOutputTokens}};
    if (message.isStructured) {
        const QJsonObject format{{u"type"_s, u"json_schema"_s},
                                 {u"name"_s, u"translation_blocks"_s},
                                 {u"strict"_s, true},
                                 {u"schema"_s, translationSchema()}};
        body.insert(u"text"_s, QJsonObject{{u"format"_s, format}});
    }
    return jsonRequest(hosts.openAI + "/v1/responses", {{"Authorization", "Bearer " + request.key.toUtf8()}}, body,
                       openAILabel, {request.key});
}

} // namespace

QString openAIAnswer(const QByteArray &body)
{
    const QJsonArray output = jsonAnswer(body)["output"_L1].toArray();
    for (const QJsonValue item : output) {
        const QJsonValue text = firstOfType(item["content"_L1], u"output_text"_s)["text"_L1];
        if (text.isString())
            return text.toString();
    }
    throw invalidResponse(openAILabel);
}

QString sendOpenAI(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message)
{
    return openAIAnswer(postJSON(services, openAIRequest(services.hosts, request, message)));
}

} // namespace lucentra
