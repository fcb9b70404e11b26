#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// DeepL v2. Keys of the free plan end in ":fx" and have their own host.

/// Throws `invalidConfiguration` if the host isn't valid in a URL.
ServiceRequest deepLRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                            const QString &target);
/// One translation per source text, or the source text if the element has none. Throws `invalidResponse`.
QStringList deepLAnswer(const QByteArray &body, const QStringList &sources);

/// One translation per block, in their order. Throws `TranslationError`.
QStringList translateWithDeepL(const TranslationServices &services, const QList<TextBlock> &blocks, const QString &key,
                               const QString &target);

} // namespace lucentra
