#include "TargetLanguageOption.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

const std::array<TargetLanguageOption, 5> &targetLanguageOptions()
{
    static const std::array<TargetLanguageOption, 5> options{{
        {u"zh-Hant"_s, u"繁體中文"_s, u"繁"_s},
        {u"zh-Hans"_s, u"簡體中文"_s, u"简"_s},
        {u"en"_s, u"英文"_s, u"EN"_s},
        {u"ja"_s, u"日文"_s, u"日"_s},
        {u"ko"_s, u"韓文"_s, u"한"_s},
    }};
    return options;
}

const TargetLanguageOption &targetLanguageOption(const QString &code)
{
    const auto &options = targetLanguageOptions();
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const TargetLanguageOption &option) { return option.code == code; });
    return found != options.end() ? *found : options.front();
}

} // namespace lucentra
