#pragma once

#include "HttpSession.h"
#include "ServiceHosts.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace lucentra {

class LocalizationManager;

/// What the clients of remote services need besides the values of a request.
struct TranslationServices
{
    const HttpSession &http;
    const ServiceHosts hosts;
    const LocalizationManager &texts;
    std::function<void()> beforeRequest; ///< throws if no further request is allowed

    /// Sends a request, if it is still allowed.
    HttpResponse send(const HttpRequest &request) const;
};

/// A request to a service, with the details that its errors need.
struct ServiceRequest
{
    HttpRequest http;
    QString provider;    ///< the service's name in its errors
    QStringList secrets; ///< removed from the service's error messages

    bool operator==(const ServiceRequest &) const = default;
};

using Headers = QList<std::pair<QByteArray, QByteArray>>;

/// A POST of a JSON body: "Content-Type: application/json", then the given headers. Throws `invalidUrl`.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QByteArray &body,
                           std::chrono::milliseconds timeout, const QString &provider, const QStringList &secrets);

/// The same with an object as body and a timeout of 45 seconds.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QJsonObject &body,
                           const QString &provider, const QStringList &secrets);

/// Sends the request and returns the answer's body. Throws `requestFailed` if the status isn't 200 to 299,
/// `invalidResponse` if the answer isn't HTTP, and other `TransportError`s unchanged.
QByteArray postJSON(const TranslationServices &services, const ServiceRequest &request);

/// The answer's body. Throws `requestFailed` if the status isn't 200 to 299.
QByteArray acceptedBody(const HttpResponse &response, const ServiceRequest &request, const LocalizationManager &texts);

bool isSuccess(const HttpResponse &response);

/// An answer's body as JSON. Every value of it is undefined if it isn't JSON.
QJsonDocument jsonAnswer(const QByteArray &body);

/// The message in an error's body: for a JSON object "error" → "message", else "message" (at most 4,000 UTF-16 units),
/// else a sentence of our own; for any other text the first 300 characters. Words that contain a secret of eight
/// characters or more are removed.
QString providerErrorMessage(const QByteArray &body, const QStringList &secrets, const LocalizationManager &texts);

/// The maximum content of a request.
struct ChunkLimit
{
    qsizetype texts = 0;
    qsizetype bytes = 0; ///< of the texts encoded as JSON
};
/// Splits the texts into consecutive runs within the limit. A longer text gets a run of its own.
QList<QStringList> chunksOf(const QStringList &texts, const ChunkLimit &limit);

} // namespace lucentra
