#pragma once

#include "BlockBatch.h"
#include "ServiceRequest.h"

namespace lucentra {

struct EngineRequest;

// The clients of the remote services, one per row of the catalogue: each translates the texts of a request and returns
// one string per text, in their order. They run on workers, may block, and throw `TranslationError`.

/// Google: Cloud Translation v2 with a key, otherwise the web translation, 6 texts per request and 3 requests at a time.
QStringList translateWithGoogle(const TranslationServices &services, const EngineRequest &request);
/// Microsoft Translator v3.
QStringList translateWithMicrosoft(const TranslationServices &services, const EngineRequest &request);
/// DeepL v2. Keys of the free plan end in ":fx" and have their own host.
QStringList translateWithDeepL(const TranslationServices &services, const EngineRequest &request);
/// Google Gemini, which has its own error texts. The answer to a batch of blocks is an array.
QStringList translateWithGemini(const TranslationServices &services, const EngineRequest &request);

/// A client of a language model: sends one message and returns the model's text.
using LanguageModelProvider = QString (*)(const TranslationServices &, const EngineRequest &, const ModelMessage &);

/// OpenAI's Responses interface. Structured answers have a schema.
QString sendOpenAI(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message);
/// Anthropic's Messages interface. Only the instruction asks for a structured answer.
QString sendAnthropic(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message);
/// Any endpoint with OpenAI's chat completions, at a base URL that the user enters.
QString sendCompatible(const TranslationServices &services, const EngineRequest &request, const ModelMessage &message);

/// The texts in as few messages as possible.
QStringList translateBlocksWithModel(const TranslationServices &services, const EngineRequest &request,
                                     LanguageModelProvider provider);
/// A typed text, dictionary-style: the model's answer, unchanged.
QString translateTextWithModel(const TranslationServices &services, const EngineRequest &request,
                               LanguageModelProvider provider);

// The parsers of answers. They throw `invalidResponse` if the answer has another form.

/// For a request with `count` texts.
QStringList googleFreeAnswer(const QByteArray &body, qsizetype count);
QStringList googleCloudAnswer(const QByteArray &body, qsizetype count);
QStringList microsoftAnswer(const QByteArray &body, qsizetype count);
/// An element without a text is the source text.
QStringList deepLAnswer(const QByteArray &body, const QStringList &sources);
QString openAIAnswer(const QByteArray &body);
QString anthropicAnswer(const QByteArray &body);
QString compatibleAnswer(const QByteArray &body);
/// Returns nullopt if the answer has no text.
std::optional<QString> geminiAnswer(const QByteArray &body);
/// Parses the model's text into one string per source. Throws a `TranslationError` of "Gemini" if it isn't an array
/// of objects.
QStringList parseGeminiBlocks(const QString &output, const QStringList &sources);

/// The base URL with the path of the chat completions; keeps query and port. Throws `invalidConfiguration` unless it is
/// https, or http to "localhost" or a loopback address.
QByteArray chatCompletionsURL(const QString &baseUrl);

} // namespace lucentra
