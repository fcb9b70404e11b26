#pragma once

#include <QString>

namespace lucentra {

/// The instructions for language models, sent verbatim. `language` is the name to insert: `promptLanguageName`, or
/// `dictionaryLanguageName` for Gemini's dictionary.

/// For a batch of blocks, answered with an object.
QString blockInstruction(const QString &language);
/// For a batch of blocks, answered with an array.
QString geminiBlockInstruction(const QString &language);
/// For typed text.
QString dictionaryInstruction(const QString &language);
/// For typed text, by Gemini.
QString geminiDictionaryInstruction(const QString &language);

} // namespace lucentra
