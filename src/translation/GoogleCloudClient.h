#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Google Cloud Translation v2: 128 texts a request, one request after another.

/// The request for one chunk of texts. Throws `invalidConfiguration` where the key has no place in a URL.
ServiceRequest googleCloudRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &target,
                                  const QString &key);
/// The translations in the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList googleCloudAnswer(const QByteArray &body, qsizetype count);

/// One translation a block, in their order. Throws `TranslationError`; the first chunk that fails ends it all.
QStringList translateWithGoogleCloud(const TranslationServices &services, const QList<TextBlock> &blocks,
                                     const QString &target, const QString &key);

} // namespace lucentra
