#pragma once

#include "LanguageModelProvider.h"
#include "ModelMessage.h"
#include "ServiceRequest.h"

namespace lucentra {

/// Any endpoint with OpenAI's chat completions, at a base URL that the user enters.

/// The base URL with the path of the chat completions; keeps query and port. Throws `invalidConfiguration` unless it is
/// https, or http to "localhost" or a loopback address.
QByteArray chatCompletionsURL(const QString &baseUrl);

/// Throws what `chatCompletionsURL` throws.
ServiceRequest compatibleRequest(const CompatibleProvider &provider, const ModelMessage &message);
/// The model's text. Throws `invalidResponse`.
QString compatibleAnswer(const QByteArray &body);

/// The model's text. Throws `TranslationError`.
QString sendCompatible(const TranslationServices &services, const CompatibleProvider &provider,
                       const ModelMessage &message);

} // namespace lucentra
