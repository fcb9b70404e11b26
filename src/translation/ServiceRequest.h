#pragma once

#include "HttpSession.h"
#include "ServiceHosts.h"
#include "TextBlock.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lucentra {

class LocalizationManager;

/// What every client of a remote service needs besides its request's values. Must outlive the requests.
struct TranslationServices
{
    const HttpSession &http;
    const ServiceHosts hosts;
    const LocalizationManager &texts;
};

/// A request to a service, with what may be said about it.
struct ServiceRequest
{
    HttpRequest http;
    QString provider; ///< the service's name in its errors
    QString key;      ///< the key that it carries, taken out of whatever the service says in an error

    bool operator==(const ServiceRequest &) const = default;
};

using Headers = QList<std::pair<QByteArray, QByteArray>>;

/// A POST of a JSON body to an encoded URL: "Content-Type: application/json", then the given headers.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QByteArray &body,
                           std::chrono::milliseconds timeout, const QString &provider, const QString &key);

/// The same with an object as body, and 45 seconds for all of it.
ServiceRequest jsonRequest(const QByteArray &url, const Headers &headers, const QJsonObject &body,
                           const QString &provider, const QString &key);

/// Sends the request and returns the answer's body. Throws `requestFailed` where the status isn't 200 to 299,
/// `invalidResponse` where the answer isn't HTTP, and any other `TransportError` as it is.
QByteArray postJSON(const TranslationServices &services, const ServiceRequest &request);

/// The answer's body. Throws `requestFailed` where the status isn't 200 to 299.
QByteArray acceptedBody(const HttpResponse &response, const ServiceRequest &request, const LocalizationManager &texts);

bool isSuccess(const HttpResponse &response);

/// What a service says in the body of an error: of a JSON object "error" → "message", else "message" (4,000 UTF-16
/// units at most: no window shows megabytes), else a sentence of our own; of any other text the first 300 characters.
/// The key doesn't appear in it.
QString providerErrorMessage(const QByteArray &body, const QString &key, const LocalizationManager &texts);

/// The texts of the blocks, in their order.
QStringList textsOf(const QList<TextBlock> &blocks);
/// The texts in consecutive runs of a size, the last one maybe shorter.
QList<QStringList> chunksOf(const QStringList &texts, qsizetype size);

} // namespace lucentra
