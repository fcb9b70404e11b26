#pragma once

#include <QString>
#include <QStringView>

namespace lucentra {

/// Conversions of the code of a target language ("zh-Hant", "zh-Hans", "en-US" or "en", "ja", "ko"). Codes are compared
/// exactly.

/// The Chinese name in the prompts for blocks, and for typed text except with Gemini. Traditional Chinese for other
/// codes.
QString promptLanguageName(const QString &target);
/// The bilingual name in Gemini's prompt for typed text. Traditional Chinese for other codes.
QString dictionaryLanguageName(const QString &target);

/// The code for both of Google's services. Other codes are unchanged.
QString googleLanguageCode(const QString &target);
/// The code for DeepL. Other codes are upper-cased.
QString deepLLanguageCode(const QString &target);
/// The code for Microsoft. Other codes are unchanged.
QString microsoftLanguageCode(const QString &target);

/// Whether the text contains a CJK unified ideograph (U+4E00 to U+9FFF).
bool containsHanCharacters(QStringView text);

} // namespace lucentra
