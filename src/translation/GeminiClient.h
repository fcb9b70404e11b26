#pragma once

#include "ModelMessage.h"
#include "ServiceRequest.h"
#include "Translations.h"

namespace lucentra {

/// Google Gemini, which has error texts of its own. Its block batch is answered with an array.

/// Nothing where the key has no place in a URL.
std::optional<ServiceRequest> geminiRequest(const ServiceHosts &hosts, const QString &key, const ModelMessage &message);
/// The model's text; nothing where the answer has none.
std::optional<QString> geminiAnswer(const QByteArray &body);
/// One string a block from the model's text. Throws `ProviderFailure` of "Gemini" where it is no array of objects.
QStringList parseGeminiBlocks(const QString &output, const QList<TextBlock> &blocks);

/// One string a block, in their order. Throws `TranslationError`.
QStringList translateBlocksWithGemini(const TranslationServices &services, const QString &key,
                                      const QList<TextBlock> &blocks, const QString &target);

/// A typed text, dictionary-style: the translation, or a message that begins with "❌ ". Throws where the request was
/// cancelled or may not be made. `target` is the target language's code.
TextTranslation translateTextWithGemini(const TranslationServices &services, const QString &key, const QString &text,
                                        const QString &target);

} // namespace lucentra
