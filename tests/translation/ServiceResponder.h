#pragma once

#include "QueuedServer.h"
#include "ServiceHosts.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace lucentra {

/// Every service at the server's address.
ServiceHosts hostsAt(const QByteArray &origin);

/// Answers a request to any of the services as that service would, told apart by the path; refuses what is above its
/// documented limits. Language models are taken to be asked for a batch if the user's message is a JSON array.
QueuedAnswer answerAsService(const ReceivedRequest &request, const std::function<QString(const QString &)> &translate);

/// The request's headers, without those that every request of the program has.
QStringList headersOf(const ReceivedRequest &request);

/// The texts that a request asks to be translated.
QStringList textsIn(const ReceivedRequest &request);

/// What a language model's service answers when the model has said the text. The service is known by the request.
QueuedAnswer modelReply(const ReceivedRequest &request, const QString &text);

} // namespace lucentra
