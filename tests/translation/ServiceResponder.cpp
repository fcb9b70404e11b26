#include "ServiceResponder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString keylessSeparator = u"||||"_s;

QByteArray pathOf(const ReceivedRequest &request)
{
    return request.target.split('?').first();
}

QJsonDocument bodyOf(const ReceivedRequest &request)
{
    return QJsonDocument::fromJson(request.body);
}

template <typename Json>
QueuedAnswer jsonAnswer(const Json &value)
{
    return QueuedAnswer::json(QJsonDocument(value).toJson(QJsonDocument::Compact));
}

bool isModel(const ReceivedRequest &request)
{
    const QByteArray path = pathOf(request);
    return path == "/v1/responses" || path == "/v1/messages" || path.endsWith("/chat/completions") ||
           path.endsWith(":generateContent");
}

QString userText(const ReceivedRequest &request)
{
    const QJsonDocument body = bodyOf(request);
    if (body["input"_L1].isString())
        return body["input"_L1].toString();
    if (body["contents"_L1].isArray())
        return body["contents"_L1][0]["parts"_L1][0]["text"_L1].toString();
    const QJsonArray messages = body["messages"_L1].toArray();
    return messages.last()["content"_L1].toString();
}

/// The refusal of a request that is larger than the service's documentation allows.
std::optional<QueuedAnswer> refusalOf(const ReceivedRequest &request)
{
    const QStringList texts = textsIn(request);
    const QByteArray path = pathOf(request);
    const bool isTooLarge =
        (path == "/v2/translate" && (texts.size() > 50 || request.body.size() > 128 * 1024)) ||
        (path == "/language/translate/v2" && (texts.size() > 128 || request.body.size() > 100'000)) ||
        (path == "/translate" && (texts.size() > 1000 || texts.join(QString()).size() > 50'000));
    return isTooLarge ? std::optional(QueuedAnswer::reply(413, R"({"message":"Request too large"})")) : std::nullopt;
}

/// As much of a model's text as it may answer with: a token is three letters, or one ideograph.
QString withinOutputLimit(const ReceivedRequest &request, const QString &text)
{
    const QJsonDocument body = bodyOf(request);
    int thirds = 0;
    for (const QString &name : {u"max_output_tokens"_s, u"max_tokens"_s})
        thirds = std::max(thirds, 3 * body[name].toInt());
    thirds = std::max(thirds, 3 * body["generationConfig"_L1]["maxOutputTokens"_L1].toInt());
    qsizetype end = 0;
    for (; end < text.size() && thirds > 0; ++end)
        thirds -= text[end].unicode() < 0x80 ? 1 : 3;
    return text.first(end);
}

} // namespace

ServiceHosts hostsAt(const QByteArray &origin)
{
    return {.googleFree = origin,
            .googleCloud = origin,
            .deepL = origin,
            .deepLFree = origin,
            .microsoft = origin,
            .openAI = origin,
            .anthropic = origin,
            .gemini = origin};
}

QStringList headersOf(const ReceivedRequest &request)
{
    QStringList headers;
    for (const auto &[name, value] : request.headers) {
        const bool isCommon =
            name == "Host" || name.startsWith("Accept") || name == "Content-Length" || value == "Lucentra";
        if (!isCommon)
            headers.append(QString::fromUtf8(name + ": " + value));
    }
    return headers;
}

QStringList textsIn(const ReceivedRequest &request)
{
    QStringList texts;
    if (request.method == "GET") {
        const QUrlQuery query(QUrl::fromEncoded(request.target).query(QUrl::FullyEncoded));
        return query.queryItemValue(u"q"_s, QUrl::FullyDecoded).split(keylessSeparator);
    }
    if (isModel(request)) {
        const QJsonDocument batch = QJsonDocument::fromJson(userText(request).toUtf8());
        if (!batch.isArray())
            return {userText(request)};
        for (const QJsonValue block : batch.array())
            texts.append(block["text"_L1].toString());
        return texts;
    }
    const QJsonDocument body = bodyOf(request);
    if (body.isArray()) {
        for (const QJsonValue element : body.array())
            texts.append(element["text"_L1].toString());
        return texts;
    }
    for (const QJsonValue text : body[body["q"_L1].isArray() ? "q"_L1 : "text"_L1].toArray())
        texts.append(text.toString());
    return texts;
}

QueuedAnswer modelReply(const ReceivedRequest &request, const QString &whole)
{
    const QString text = withinOutputLimit(request, whole);
    const QByteArray path = pathOf(request);
    if (path == "/v1/responses") {
        const QJsonObject part{{u"type"_s, u"output_text"_s}, {u"text"_s, text}};
        const QJsonObject message{{u"type"_s, u"message"_s}, {u"content"_s, QJsonArray{part}}};
        return jsonAnswer(QJsonObject{{u"output"_s, QJsonArray{QJsonObject{{u"type"_s, u"reasoning"_s}}, message}}});
    }
    if (path == "/v1/messages")
        return jsonAnswer(
            QJsonObject{{u"content"_s, QJsonArray{QJsonObject{{u"type"_s, u"text"_s}, {u"text"_s, text}}}}});
    if (path.endsWith(":generateContent")) {
        const QJsonObject content{{u"parts"_s, QJsonArray{QJsonObject{{u"text"_s, text}}}}};
        return jsonAnswer(QJsonObject{{u"candidates"_s, QJsonArray{QJsonObject{{u"content"_s, content}}}}});
    }
    const QJsonObject message{{u"message"_s, QJsonObject{{u"content"_s, text}}}};
    return jsonAnswer(QJsonObject{{u"choices"_s, QJsonArray{message}}});
}

QueuedAnswer answerAsService(const ReceivedRequest &request, const std::function<QString(const QString &)> &translate)
{
    if (const auto refusal = refusalOf(request))
        return *refusal;
    QStringList translations;
    for (const QString &text : textsIn(request))
        translations.append(translate(text));
    if (request.method == "GET") {
        // In two sentences, as the service cuts longer texts.
        const QString all = translations.join(keylessSeparator);
        const qsizetype half = all.size() / 2;
        return jsonAnswer(QJsonArray{QJsonArray{QJsonArray{all.left(half), u"source"_s},
                                                QJsonArray{all.mid(half), u"source"_s}, QJsonArray{QJsonValue()}},
                                     QJsonValue(), u"en"_s});
    }
    if (isModel(request)) {
        if (!userText(request).startsWith(u'['))
            return modelReply(request, translations.value(0));
        QJsonArray batch;
        for (const QString &translation : translations)
            batch.append(QJsonObject{{u"id"_s, batch.size()}, {u"text"_s, translation}});
        const QJsonDocument document = pathOf(request).endsWith(":generateContent")
                                           ? QJsonDocument(batch)
                                           : QJsonDocument(QJsonObject{{u"translations"_s, batch}});
        return modelReply(request, QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
    }
    QJsonArray elements;
    const bool isMicrosoft = pathOf(request) == "/translate";
    const QString name = pathOf(request) == "/language/translate/v2" ? u"translatedText"_s : u"text"_s;
    for (const QString &translation : translations) {
        const QJsonObject element{{name, translation}};
        elements.append(isMicrosoft ? QJsonObject{{u"translations"_s, QJsonArray{element}}} : element);
    }
    if (isMicrosoft)
        return jsonAnswer(elements);
    const QJsonObject object{{u"translations"_s, elements}};
    return jsonAnswer(pathOf(request) == "/v2/translate" ? object : QJsonObject{{u"data"_s, object}});
}

} // namespace lucentra
