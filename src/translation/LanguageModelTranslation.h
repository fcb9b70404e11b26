#pragma once

#include "LanguageModelProvider.h"
#include "ServiceRequest.h"

namespace lucentra {

/// Translation by a language model through the provider's client.

/// All blocks in one request; one string a block, in their order. Throws `TranslationError`.
QStringList translateBlocksWithModel(const TranslationServices &services, const QList<TextBlock> &blocks,
                                     const QString &target, const LanguageModelProvider &provider);

/// Translates a typed text dictionary-style. Returns the model's answer unchanged. Throws `TranslationError`.
QString translateTextWithModel(const TranslationServices &services, const QString &text, const QString &target,
                               const LanguageModelProvider &provider);

} // namespace lucentra
