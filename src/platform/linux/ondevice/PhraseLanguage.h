#pragma once

#include "Language.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace lucentra {

/// The languages of phrases; their positions are their numbers in the file of phrases. English isn't among
/// them: it is the source language of programs, and pairs of two others go through it. Phrases are translated into
/// target languages, and from all.
inline constexpr auto phraseLanguages = [] {
    std::array<Language, languages.size() - 1> others;
    std::copy_if(languages.begin(), languages.end(), others.begin(), [](const Language &language) {
        return std::string_view(language.code.data(), size_t(language.code.size())) != "en";
    });
    return others;
}();

/// The number of a language by its code. A region that no language has is ignored ("de-AT" is "de").
std::optional<int> phraseLanguage(QStringView code);
/// The number of a language by the name of a catalogue's locale ("ja", "zh_TW", "de_DE.UTF-8").
std::optional<int> phraseLanguageOfLocale(QStringView locale);
/// Whether a code means English.
bool isEnglish(QStringView code);

} // namespace lucentra
