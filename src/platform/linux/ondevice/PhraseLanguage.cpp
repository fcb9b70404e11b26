#include "PhraseLanguage.h"

#include <algorithm>

namespace lucentra {

namespace {

template <typename Matches>
std::optional<int> find(Matches matches)
{
    const auto found = std::find_if(phraseLanguages.begin(), phraseLanguages.end(), matches);
    return found == phraseLanguages.end() ? std::nullopt : std::optional(int(found - phraseLanguages.begin()));
}

/// The usual name of a locale that has several.
QStringView usualLocale(QStringView locale)
{
    if (const qsizetype encoding = locale.indexOf(u'.'); encoding >= 0)
        locale = locale.first(encoding);
    if (locale == u"zh_Hant" || locale == u"zh-TW" || locale == u"zh_Hant_TW" || locale == u"zh-Hant")
        return u"zh_TW";
    if (locale == u"zh_Hans" || locale == u"zh-CN" || locale == u"zh_Hans_CN" || locale == u"zh-Hans" ||
        locale == u"zh")
        return u"zh_CN";
    if (locale == u"pt" || locale == u"pt-BR")
        return u"pt_BR";
    if (locale == u"ja_JP" || locale == u"ko_KR" || locale == u"de_DE" || locale == u"fr_FR" || locale == u"es_ES" ||
        locale == u"it_IT" || locale == u"nl_NL" || locale == u"pl_PL" || locale == u"ru_RU")
        return locale.first(2);
    return locale;
}

} // namespace

std::optional<int> phraseLanguage(QStringView code)
{
    const auto exact = find([&](const Language &language) { return code == language.code; });
    const qsizetype dash = code.indexOf(u'-');
    if (exact || dash < 0 || code.startsWith(u"zh"))
        return exact;
    return find([&](const Language &language) { return code.first(dash) == language.code; });
}

std::optional<int> phraseLanguageOfLocale(QStringView locale)
{
    return find([usual = usualLocale(locale)](const Language &language) { return usual == language.locale; });
}

bool isEnglish(QStringView code)
{
    return code == u"en" || code.startsWith(u"en-");
}

} // namespace lucentra
