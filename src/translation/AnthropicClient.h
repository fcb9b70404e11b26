#pragma once

#include "LanguageModelProvider.h"
#include "ModelMessage.h"
#include "ServiceRequest.h"

namespace lucentra {

/// Anthropic's Messages interface. A structured answer is asked for by the instruction alone.

/// Throws `invalidConfiguration` where the host makes no URL.
ServiceRequest anthropicRequest(const ServiceHosts &hosts, const AnthropicProvider &provider,
                                const ModelMessage &message);
/// The model's text. Throws `invalidResponse`.
QString anthropicAnswer(const QByteArray &body);

/// The model's text. Throws `TranslationError`.
QString sendAnthropic(const TranslationServices &services, const AnthropicProvider &provider,
                      const ModelMessage &message);

} // namespace lucentra
