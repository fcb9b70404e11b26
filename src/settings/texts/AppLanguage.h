#pragma once

#include <QString>

#include <array>

namespace lucentra {

/// The languages that the interface can be shown in, in the order of the language picker: the system's, then
/// `targetLanguages`.
enum class AppLanguage { System, TraditionalChinese, SimplifiedChinese, English, Japanese, Korean };

inline constexpr std::array allAppLanguages{
    AppLanguage::System,  AppLanguage::TraditionalChinese, AppLanguage::SimplifiedChinese,
    AppLanguage::English, AppLanguage::Japanese,           AppLanguage::Korean};

/// The stored value of `settings::appLanguage`: "system", or the code of the language's string table.
QString rawValue(AppLanguage language);

/// The language with exactly this raw value, or `System`.
AppLanguage appLanguageFromRawValue(const QString &value);

/// The text key of the language's name in the language picker.
QString pickerLabelKey(AppLanguage language);

/// The language with a string table ("zh-Hans", "zh-Hant", "ja", "ko" or "en") that is nearest to a BCP 47 tag. Chinese
/// is traditional unless the tag names the simplified script, mainland China or Singapore. The fall-back is English.
QString supportedLanguageCode(const QString &tag);

} // namespace lucentra
