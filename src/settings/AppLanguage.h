#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace lucentra {

/// The languages that the interface can be shown in, in the order of the language picker: the system's, then
/// `targetLanguages`.
enum class AppLanguage { System, TraditionalChinese, SimplifiedChinese, English, Japanese, Korean };

inline constexpr std::array allAppLanguages{
    AppLanguage::System,  AppLanguage::TraditionalChinese, AppLanguage::SimplifiedChinese,
    AppLanguage::English, AppLanguage::Japanese,           AppLanguage::Korean};

/// What is stored under `settings::appLanguage`: "system", or the code of the language's string table.
QString rawValue(AppLanguage language);

/// Exact matches only; everything else is `System`.
AppLanguage appLanguageFromRawValue(const QString &value);

/// Key of the language's name in the language picker.
QString pickerLabelKey(AppLanguage language);

/// The nearest language that has a string table ("zh-Hans", "zh-Hant", "ja", "ko" or "en") for a BCP 47 tag. Chinese
/// without a sign of the simplified script is traditional; a language without a table is English.
QString supportedLanguageCode(const QString &tag);

} // namespace lucentra
