#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lucentra {

/// The maximum length of a language model's answer in tokens and its temperature, for every service with these options.
inline constexpr int mostOutputTokens = 8192;
inline constexpr double batchTemperature = 0.1;

/// A message to a language model.
struct ModelMessage
{
    QString instruction;       ///< for the service's system or instruction field
    QString userText;          ///< the batch of blocks or the typed text
    bool isStructured = false; ///< the answer must be JSON
};

// The protocol between the program and a language model: the blocks in one message, numbered by their position.

/// Splits the blocks into consecutive runs whose translations each fit into one answer; usually there is one run.
/// Returns one empty run for no blocks.
QList<QStringList> blockBatches(const QStringList &blocks);

/// The user message: `[{"id":0,"text":"…"},…]`, one object per block. Returns nullopt if a text is not valid Unicode.
std::optional<QString> blockBatchInput(const QStringList &blocks);

/// Removes surrounding white space and Markdown fences from a model's output.
QString withoutFences(const QString &output);

/// One text per block: that of the array's element with the block's position as "id", or the block's own text. Ignores
/// elements whose "id" is not an integer or whose "text" is not a string. Of elements with the same id the last counts.
QStringList matchedTranslations(const QJsonArray &elements, const QStringList &blocks);

/// Parses the output of a model that was asked for an object with an array "translations". Throws the JSON parser's
/// failure (domain "JSON") if it isn't JSON, and `invalidResponse` of "AI 翻譯" if it has another form.
QStringList parseBlockTranslations(const QString &output, const QStringList &blocks);

} // namespace lucentra
