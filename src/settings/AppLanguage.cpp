#include "AppLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

struct AppLanguageRow
{
    AppLanguage language;
    QStringView rawValue;
    QStringView pickerLabel;
};

constexpr std::array appLanguageRows{
    AppLanguageRow{AppLanguage::System, u"system", u"跟隨系統"},
    AppLanguageRow{AppLanguage::TraditionalChinese, u"zh-Hant", u"繁體中文"},
    AppLanguageRow{AppLanguage::SimplifiedChinese, u"zh-Hans", u"簡體中文"},
    AppLanguageRow{AppLanguage::English, u"en", u"English"},
    AppLanguageRow{AppLanguage::Japanese, u"ja", u"日文"},
    AppLanguageRow{AppLanguage::Korean, u"ko", u"韓文"},
};

const AppLanguageRow &rowOf(AppLanguage language)
{
    return appLanguageRows[size_t(language)];
}

} // namespace

QString rawValue(AppLanguage language)
{
    return rowOf(language).rawValue.toString();
}

AppLanguage appLanguageFromRawValue(const QString &rawValue)
{
    for (const AppLanguageRow &row : appLanguageRows) {
        if (row.rawValue == rawValue)
            return row.language;
    }
    return AppLanguage::System;
}

QString pickerLabelKey(AppLanguage language)
{
    return rowOf(language).pickerLabel.toString();
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
