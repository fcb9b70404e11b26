#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Microsoft Translator v3: 100 texts a request, one request after another.

/// The request for one chunk of texts. Throws `invalidConfiguration` where the code has no place in a URL.
ServiceRequest microsoftRequest(const ServiceHosts &hosts, const QStringList &texts, const QString &key,
                                const QString &region, const QString &target);
/// The translations in the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList microsoftAnswer(const QByteArray &body, qsizetype count);

/// One translation a block, in their order. Throws `TranslationError`; the first chunk that fails ends it all.
QStringList translateWithMicrosoft(const TranslationServices &services, const QList<TextBlock> &blocks,
                                   const QString &key, const QString &region, const QString &target);

} // namespace lucentra
