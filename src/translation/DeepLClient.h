#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// DeepL v2: all texts in one request. A key of the free plan, which ends in ":fx", has a host of its own.

/// Throws `invalidConfiguration` where the host makes no URL.
ServiceRequest deepLRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                            const QString &target);
/// One translation a source text; the source text itself where the element has none. Throws `invalidResponse`.
QStringList deepLAnswer(const QByteArray &body, const QStringList &sources);

/// One translation a block, in their order. Throws `TranslationError`.
QStringList translateWithDeepL(const TranslationServices &services, const QList<TextBlock> &blocks, const QString &key,
                               const QString &target);

} // namespace lucentra
