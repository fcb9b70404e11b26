#pragma once

#include "ServiceRequest.h"

namespace lucentra {

/// Google's web translation, which needs no key: 6 texts a request, 3 requests side by side.

/// The request for one chunk of texts; nothing where a text is not valid Unicode or the code has no place in a URL.
std::optional<ServiceRequest> googleFreeRequest(const ServiceHosts &hosts, const QStringList &texts,
                                                const QString &target);
/// The translations in the answer to a request with `count` texts. Throws `invalidResponse`.
QStringList googleFreeAnswer(const QByteArray &body, qsizetype count);

/// One translation a block, in their order. Throws `TranslationError`; the first chunk that fails ends it all.
QStringList translateWithGoogleFree(const TranslationServices &services, const QList<TextBlock> &blocks,
                                    const QString &target);

} // namespace lucentra
