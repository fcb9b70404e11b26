#pragma once

#include "Language.h"

namespace lucentra {

/// A target language that the pane offers: one of `targetLanguages`.
using TargetLanguageOption = Language;

/// The option of a code, or the first one if no option has the code.
inline const TargetLanguageOption &targetLanguageOption(QStringView code)
{
    const Language *const language = targetLanguage(code);
    return language ? *language : targetLanguages.front();
}

} // namespace lucentra
