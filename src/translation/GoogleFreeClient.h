#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Google's web translation without a key: 6 texts per request, 3 concurrent requests.

/// The request for one chunk of texts. Returns nullopt if a text isn't valid Unicode or the code isn't valid in a URL.
std::optional<ServiceRequest> googleFreeRequest(const ServiceHosts &hosts, const QStringList &texts,
                                                const QString &target);
/// Parses the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList googleFreeAnswer(const QByteArray &body, qsizetype count);

/// One translation per block, in their order. Throws `TranslationError` of the first chunk that fails.
QStringList translateWithGoogleFree(const TranslationServices &services, const QList<TextBlock> &blocks,
                                    const QString &target);

} // namespace lucentra
