#include "AppLanguage.h"

#include "Language.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The target language that is the same as a concrete interface language.
const Language &languageOf(AppLanguage language)
{
    return targetLanguages[size_t(language) - 1];
}

} // namespace

QString rawValue(AppLanguage language)
{
    return language == AppLanguage::System ? u"system"_s : QString(languageOf(language).code);
}

AppLanguage appLanguageFromRawValue(const QString &value)
{
    const auto found = std::find_if(allAppLanguages.begin(), allAppLanguages.end(),
                                    [&](AppLanguage language) { return rawValue(language) == value; });
    return found == allAppLanguages.end() ? AppLanguage::System : *found;
}

QString pickerLabelKey(AppLanguage language)
{
    if (language == AppLanguage::System)
        return u"跟隨系統"_s;
    return (language == AppLanguage::English ? languageOf(language).englishName : languageOf(language).name).toString();
}

QString supportedLanguageCode(const QString &tag)
{
    if (tag.startsWith("zh-Hans"_L1) || tag.startsWith("zh-CN"_L1) || tag.startsWith("zh-SG"_L1))
        return u"zh-Hans"_s;
    if (tag.startsWith("zh"_L1))
        return u"zh-Hant"_s;
    if (tag.startsWith("ja"_L1))
        return u"ja"_s;
    if (tag.startsWith("ko"_L1))
        return u"ko"_s;
    return u"en"_s;
}

} // namespace lucentra
