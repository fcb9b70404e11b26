#pragma once

#include "LanguageModelProvider.h"
#include "ModelMessage.h"
#include "ServiceRequest.h"

namespace lucentra {

/// Anthropic's Messages interface. Only the instruction asks for a structured answer.

/// Throws `invalidConfiguration` if the host isn't valid in a URL.
ServiceRequest anthropicRequest(const ServiceHosts &hosts, const AnthropicProvider &provider,
                                const ModelMessage &message);
/// The model's text. Throws `invalidResponse`.
QString anthropicAnswer(const QByteArray &body);

/// The model's text. Throws `TranslationError`.
QString sendAnthropic(const TranslationServices &services, const AnthropicProvider &provider,
                      const ModelMessage &message);

} // namespace lucentra
