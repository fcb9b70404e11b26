#include "OverlayFont.h"

#include "Language.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

struct LanguageFamily
{
    QLatin1StringView prefix; ///< of the language tag, lower case
    QLatin1StringView family;
};

// Besides those of the target languages. The first match counts. The regions of Chinese write the same characters in
// different shapes.
constexpr LanguageFamily otherFamilies[] = {
    {"zh-cn"_L1, "Noto Sans CJK SC"_L1},  {"zh-sg"_L1, "Noto Sans CJK SC"_L1}, {"zh-hk"_L1, "Noto Sans CJK HK"_L1},
    {"zh"_L1, "Noto Sans CJK TC"_L1},     {"ar"_L1, "Noto Sans Arabic"_L1},    {"fa"_L1, "Noto Sans Arabic"_L1},
    {"ur"_L1, "Noto Sans Arabic"_L1},     {"he"_L1, "Noto Sans Hebrew"_L1},    {"th"_L1, "Noto Sans Thai"_L1},
    {"hi"_L1, "Noto Sans Devanagari"_L1},
};

// Fallbacks for characters that the language's family lacks, in this order. Emoji come before symbols, since a reader
// expects the coloured form, but after the text families, since the emoji font has its own digits.
constexpr QLatin1StringView fallbackFamilies[] = {
    "Noto Sans"_L1,      "Noto Sans CJK TC"_L1,     "Noto Sans Arabic"_L1, "Noto Sans Hebrew"_L1,
    "Noto Sans Thai"_L1, "Noto Sans Devanagari"_L1, "Noto Color Emoji"_L1, "Noto Sans Symbols2"_L1,
};

/// Whether the leading subtags of a tag equal the prefix.
bool begins(const QString &tag, QLatin1StringView prefix)
{
    return tag.startsWith(prefix, Qt::CaseInsensitive) && (tag.size() == prefix.size() || tag[prefix.size()] == u'-');
}

/// Empty if no family is known to suit the language.
QLatin1StringView familyOf(const QString &tag)
{
    for (const Language &language : targetLanguages) {
        if (begins(tag, language.code))
            return language.font;
    }
    for (const LanguageFamily &other : otherFamilies) {
        if (begins(tag, other.prefix))
            return other.family;
    }
    return {};
}

} // namespace

QStringList textFamilies(const QString &language)
{
    QStringList families;
    if (const QLatin1StringView family = familyOf(language); !family.isEmpty())
        families.append(family);
    for (const QLatin1StringView family : fallbackFamilies) {
        if (!families.contains(family))
            families.append(family);
    }
    return families;
}

QFont overlayFont(const QString &targetLanguage, const QString &family)
{
    QFont font;
    QStringList families = textFamilies(targetLanguage);
    if (!family.isEmpty())
        families.prepend(family);
    font.setFamilies(families);
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(QFont::Bold);
    font.setPixelSize(overlayReferencePixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace lucentra
