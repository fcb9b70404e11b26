#pragma once

#include <QString>

#include <array>

namespace lucentra {

/// A target language that the pane offers.
struct TargetLanguageOption
{
    QString code;
    QString name;       ///< key of its name in the interface language
    QString shortLabel; ///< as it stands on a button, the same in all languages
};

/// The languages in the order of the menu.
const std::array<TargetLanguageOption, 5> &targetLanguageOptions();

/// The option for a code; the first one where there is none.
const TargetLanguageOption &targetLanguageOption(const QString &code);

} // namespace lucentra
