#include "TargetLanguage.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

struct TargetLanguage
{
    QLatin1StringView code;
    QStringView promptName;
    QStringView dictionaryName;
    QLatin1StringView google;
    QLatin1StringView deepL;
    QLatin1StringView microsoft;
};

constexpr std::array targetLanguages{
    TargetLanguage{"zh-Hant"_L1, u"繁體中文", u"繁體中文 (Traditional Chinese)", "zh-TW"_L1, "ZH-HANT"_L1,
                   "zh-Hant"_L1},
    TargetLanguage{"zh-Hans"_L1, u"簡體中文", u"簡體中文 (Simplified Chinese)", "zh-CN"_L1, "ZH-HANS"_L1, "zh-Hans"_L1},
    TargetLanguage{"en-US"_L1, u"英文", u"英文 (English)", "en"_L1, "EN-US"_L1, "en"_L1},
    TargetLanguage{"en"_L1, u"英文", u"英文 (English)", "en"_L1, "EN-US"_L1, "en"_L1},
    TargetLanguage{"ja"_L1, u"日文", u"日文 (Japanese)", "ja"_L1, "JA"_L1, "ja"_L1},
    TargetLanguage{"ko"_L1, u"韓文", u"韓文 (Korean)", "ko"_L1, "KO"_L1, "ko"_L1},
};

const TargetLanguage *find(const QString &code)
{
    const auto found = std::find_if(targetLanguages.begin(), targetLanguages.end(),
                                    [&](const TargetLanguage &language) { return language.code == code; });
    return found == targetLanguages.end() ? nullptr : &*found;
}

} // namespace

QString promptLanguageName(const QString &target)
{
    const TargetLanguage *const language = find(target);
    return (language ? *language : targetLanguages.front()).promptName.toString();
}

QString dictionaryLanguageName(const QString &target)
{
    const TargetLanguage *const language = find(target);
    return (language ? *language : targetLanguages.front()).dictionaryName.toString();
}

QString googleLanguageCode(const QString &target)
{
    const TargetLanguage *const language = find(target);
    return language ? QString(language->google) : target;
}

QString deepLLanguageCode(const QString &target)
{
    const TargetLanguage *const language = find(target);
    return language ? QString(language->deepL) : target.toUpper();
}

QString microsoftLanguageCode(const QString &target)
{
    const TargetLanguage *const language = find(target);
    return language ? QString(language->microsoft) : target;
}

bool containsHanCharacters(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c >= u'\u4E00' && c <= u'\u9FFF'; });
}

} // namespace lucentra
