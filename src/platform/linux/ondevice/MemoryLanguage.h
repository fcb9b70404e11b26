#pragma once

#include "Language.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace lucentra {

/// The languages of the phrase memory; their places are the numbers by which its file knows them. English isn't among
/// them: it is what programs are written in, and every pair of two others goes through it. Phrases are translated into
/// target languages, and out of all.
inline constexpr auto memoryLanguages = [] {
    std::array<Language, languages.size() - 1> others;
    std::copy_if(languages.begin(), languages.end(), others.begin(), [](const Language &language) {
        return std::string_view(language.code.data(), size_t(language.code.size())) != "en";
    });
    return others;
}();

/// The number of a language by its code, whose region doesn't count where no language has it ("de-AT" is "de").
std::optional<int> memoryLanguage(QStringView code);
/// The number of a language by the name of a catalogue's locale ("ja", "zh_TW", "de_DE.UTF-8").
std::optional<int> memoryLanguageOfLocale(QStringView locale);
/// Whether a code means English.
bool isEnglish(QStringView code);

} // namespace lucentra
