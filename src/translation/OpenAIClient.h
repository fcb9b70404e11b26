#pragma once

#include "LanguageModelProvider.h"
#include "ModelMessage.h"
#include "ServiceRequest.h"

namespace lucentra {

/// OpenAI's Responses interface. Structured answers have a schema.

/// Throws `invalidConfiguration` if the host isn't valid in a URL.
ServiceRequest openAIRequest(const ServiceHosts &hosts, const OpenAIProvider &provider, const ModelMessage &message);
/// The model's text. Throws `invalidResponse`.
QString openAIAnswer(const QByteArray &body);

/// The model's text. Throws `TranslationError`.
QString sendOpenAI(const TranslationServices &services, const OpenAIProvider &provider, const ModelMessage &message);

} // namespace lucentra
