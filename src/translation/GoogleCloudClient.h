#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Google Cloud Translation v2: at most 128 texts per request, one request after another.

/// The request for one chunk of texts. Throws `invalidConfiguration` if the key isn't valid in a URL.
ServiceRequest googleCloudRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &target,
                                  const QString &key);
/// Parses the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList googleCloudAnswer(const QByteArray &body, qsizetype count);

/// One translation per block, in their order. Throws `TranslationError` of the first chunk that fails.
QStringList translateWithGoogleCloud(const TranslationServices &services, const QList<TextBlock> &blocks,
                                     const QString &target, const QString &key);

} // namespace lucentra
