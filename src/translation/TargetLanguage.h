#pragma once

#include <QString>
#include <QStringView>

namespace lucentra {

/// What the code of a target language ("zh-Hant", "zh-Hans", "en-US" or "en", "ja", "ko") becomes for each reader.
/// Codes are compared exactly; any other code is handled as each function says.

/// The Chinese name in the prompts for blocks, and for typed text where the model isn't Gemini; Traditional Chinese
/// for any other code.
QString promptLanguageName(const QString &target);
/// The bilingual name in Gemini's prompt for typed text; Traditional Chinese for any other code.
QString dictionaryLanguageName(const QString &target);

/// Google's code, of both services; any other code unchanged.
QString googleLanguageCode(const QString &target);
/// DeepL's code; any other code in upper case.
QString deepLLanguageCode(const QString &target);
/// Microsoft's code; any other code unchanged.
QString microsoftLanguageCode(const QString &target);

/// True when the text has a character of the block of CJK unified ideographs (U+4E00 to U+9FFF).
bool containsHanCharacters(QStringView text);

} // namespace lucentra
