#pragma once

#include "HttpSession.h"
#include "ServiceHosts.h"
#include "TextBlock.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class LocalizationManager;

/// What every client of a remote service needs besides its request's values. Must outlive the requests.
struct TranslationServices
{
    const HttpSession &http;
    const ServiceHosts hosts;
    const LocalizationManager &texts;
    std::function<void()> beforeRequest; ///< throws where no further request may be made

    /// Sends one request, if it still may be made.
    HttpResponse send(const HttpRequest &request) const;
};

/// A request to a service, with what may be said about it.
struct ServiceRequest
{
    HttpRequest http;
    QString provider;    ///< the service's name in its errors
    QStringList secrets; ///< what it carries, taken out of whatever the service says in an error

    bool operator==(const ServiceRequest &) const = default;
};

using Headers = QList<std::pair<QByteArray, QByteArray>>;

/// A POST of a JSON body to an encoded URL: "Content-Type: application/json", then the given headers.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QByteArray &body,
                           std::chrono::milliseconds timeout, const QString &provider, const QStringList &secrets);

/// The same with an object as body, and 45 seconds for all of it.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QJsonObject &body,
                           const QString &provider, const QStringList &secrets);

/// Sends the request and returns the answer's body. Throws `requestFailed` where the status isn't 200 to 299,
/// `invalidResponse` where the answer isn't HTTP, and any other `TransportError` as it is.
QByteArray postJSON(const TranslationServices &services, const ServiceRequest &request);

/// The answer's body. Throws `requestFailed` where the status isn't 200 to 299.
QByteArray acceptedBody(const HttpResponse &response, const ServiceRequest &request, const LocalizationManager &texts);

bool isSuccess(const HttpResponse &response);

/// What a service says in the body of an error: of a JSON object "error" → "message", else "message" (4,000 UTF-16
/// units at most: no window shows megabytes), else a sentence of our own; of any other text the first 300 characters.
/// Words that hold a secret of eight characters or more are taken out.
QString providerErrorMessage(const QByteArray &body, const QStringList &secrets, const LocalizationManager &texts);

/// The texts of the blocks, in their order.
QStringList textsOf(const QList<TextBlock> &blocks);
/// How much one request may hold.
struct ChunkLimit
{
    qsizetype texts = 0;
    qsizetype bytes = 0; ///< of the texts as they stand in JSON
};
/// The texts in consecutive runs within the limit. A text above it has a run of its own.
QList<QStringList> chunksOf(const QStringList &texts, const ChunkLimit &limit);

} // namespace lucentra
