#pragma once

#include "ModelMessage.h"
#include "ServiceRequest.h"
#include "Translations.h"

namespace lucentra {

/// Google Gemini, which has its own error texts. The answer to a batch of blocks is an array.

/// Returns nullopt if the key isn't valid in a URL.
std::optional<ServiceRequest> geminiRequest(const ServiceHosts &hosts, const QString &key, const ModelMessage &message);
/// The model's text. Returns nullopt if the answer has none.
std::optional<QString> geminiAnswer(const QByteArray &body);
/// Parses the model's text into one string per block. Throws `ProviderFailure` of "Gemini" if it isn't an array of
/// objects.
QStringList parseGeminiBlocks(const QString &output, const QList<TextBlock> &blocks);

/// One string per block, in their order. Throws `TranslationError`.
QStringList translateBlocksWithGemini(const TranslationServices &services, const QString &key,
                                      const QList<TextBlock> &blocks, const QString &target);

/// Translates a typed text dictionary-style. Returns the translation, or a message that begins with "❌ ". Throws if the
/// request was cancelled or isn't allowed. `target` is the code of the target language.
TextTranslation translateTextWithGemini(const TranslationServices &services, const QString &key, const QString &text,
                                        const QString &target);

} // namespace lucentra
