#pragma once

#include "TextBlock.h"

#include <QByteArray>
#include <QJsonArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lucentra {

/// The wire protocol between the program and a language model: the blocks in one message, numbered by their position.

/// The blocks in consecutive runs whose translations fit into one answer: in general all in one. No blocks are one
/// empty run.
QList<QList<TextBlock>> blockBatches(const QList<TextBlock> &blocks);

/// The user message: `[{"id":0,"text":"…"},…]`, one object a block; nothing where a text is not valid Unicode.
std::optional<QString> blockBatchInput(const QList<TextBlock> &blocks);

/// A model's output without surrounding white space and Markdown fences.
QString withoutFences(const QString &output);

/// One text a block: that of the array's element with the block's position as "id", else the block's own. Elements
/// whose "id" is no whole number or whose "text" is no string are ignored; of several with one id the last counts.
QStringList matchedTranslations(const QJsonArray &elements, const QList<TextBlock> &blocks);

/// The translations of a model that was asked for an object with an array "translations". Throws the JSON parser's
/// failure (domain "JSON") where the output is no JSON, `invalidResponse` of "AI 翻譯" where it is of another form.
QStringList parseBlockTranslations(const QString &output, const QList<TextBlock> &blocks);

} // namespace lucentra
