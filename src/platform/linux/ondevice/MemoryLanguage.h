#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <array>
#include <optional>

namespace lucentra {

/// A language of the phrase memory. English isn't among them: it is what programs are written in, and every pair of
/// two others goes through it.
struct MemoryLanguage
{
    QLatin1StringView code;
    QLatin1StringView locale; ///< how catalogues call it
    bool isTarget;            ///< phrases are translated into it, not just out of it
};

/// Their places are the numbers by which the memory's file knows them. Targets are those that users can choose; the
/// others are the languages that programs are most often translated into, so that their texts are told apart too.
inline constexpr std::array memoryLanguages{
    MemoryLanguage{QLatin1StringView("zh-Hant"), QLatin1StringView("zh_TW"), true},
    MemoryLanguage{QLatin1StringView("zh-Hans"), QLatin1StringView("zh_CN"), true},
    MemoryLanguage{QLatin1StringView("ja"), QLatin1StringView("ja"), true},
    MemoryLanguage{QLatin1StringView("ko"), QLatin1StringView("ko"), true},
    MemoryLanguage{QLatin1StringView("de"), QLatin1StringView("de"), false},
    MemoryLanguage{QLatin1StringView("fr"), QLatin1StringView("fr"), false},
    MemoryLanguage{QLatin1StringView("es"), QLatin1StringView("es"), false},
    MemoryLanguage{QLatin1StringView("it"), QLatin1StringView("it"), false},
    MemoryLanguage{QLatin1StringView("pt"), QLatin1StringView("pt_BR"), false},
    MemoryLanguage{QLatin1StringView("nl"), QLatin1StringView("nl"), false},
    MemoryLanguage{QLatin1StringView("pl"), QLatin1StringView("pl"), false},
    MemoryLanguage{QLatin1StringView("ru"), QLatin1StringView("ru"), false},
};

/// The number of a language by its code, whose region doesn't count where no language has it ("de-AT" is "de").
std::optional<int> memoryLanguage(QStringView code);
/// The number of a language by the name of a catalogue's locale ("ja", "zh_TW", "de_DE.UTF-8").
std::optional<int> memoryLanguageOfLocale(QStringView locale);
/// Whether a code means English.
bool isEnglish(QStringView code);

} // namespace lucentra
