#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Microsoft Translator v3: at most 100 texts per request, one request after another.

/// The request for one chunk of texts. Throws `invalidConfiguration` if the code isn't valid in a URL.
ServiceRequest microsoftRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                                const QString &region, const QString &target);
/// Parses the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList microsoftAnswer(const QByteArray &body, qsizetype count);

/// One translation per block, in their order. Throws `TranslationError` of the first chunk that fails.
QStringList translateWithMicrosoft(const TranslationServices &services, const QList<TextBlock> &blocks,
                                   const QString &key, const QString &region, const QString &target);

} // namespace lucentra
