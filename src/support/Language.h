#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <array>
#include <span>

namespace lucentra {

/// A language that the program knows by name.
struct Language
{
    QLatin1StringView code;   ///< BCP 47, as settings and engines name it
    QLatin1StringView locale; ///< as message catalogues and the toolkit name it
    // Only of those that users can choose for the interface and as a target.
    QStringView name; ///< Chinese; also the key of the name in the interface language
    QStringView englishName;
    QStringView shortLabel;        ///< the same in every interface language
    QLatin1StringView font;        ///< the family that writes its characters in the shapes of its region
    QLatin1StringView lineModel;   ///< Tesseract's model that reads it in lines
    QLatin1StringView columnModel; ///< the same in columns; empty if there is none, or another's reads it too

    /// Whether users can choose it for the interface and as a target. The others are those that programs are most often
    /// translated into, so that their texts are recognized.
    constexpr bool isTarget() const { return !name.isEmpty(); }
};

/// The one table of languages: targets first, in the order of menus. The place of a language, English left out, is its
/// number in the file of phrases.
inline constexpr std::array languages{
    Language{QLatin1StringView("zh-Hant"), QLatin1StringView("zh_TW"), u"繁體中文", u"Traditional Chinese", u"繁",
             QLatin1StringView("Noto Sans CJK TC"), QLatin1StringView("chi_tra"), QLatin1StringView("chi_tra_vert")},
    Language{QLatin1StringView("zh-Hans"), QLatin1StringView("zh_CN"), u"簡體中文", u"Simplified Chinese", u"简",
             QLatin1StringView("Noto Sans CJK SC"), QLatin1StringView("chi_sim")},
    Language{QLatin1StringView("en"), QLatin1StringView("en"), u"英文", u"English", u"EN",
             QLatin1StringView("Noto Sans"), QLatin1StringView("eng")},
    Language{QLatin1StringView("ja"), QLatin1StringView("ja"), u"日文", u"Japanese", u"日",
             QLatin1StringView("Noto Sans CJK JP"), QLatin1StringView("jpn"), QLatin1StringView("jpn_vert")},
    Language{QLatin1StringView("ko"), QLatin1StringView("ko"), u"韓文", u"Korean", u"한",
             QLatin1StringView("Noto Sans CJK KR"), QLatin1StringView("kor")},
    Language{QLatin1StringView("de"), QLatin1StringView("de")},
    Language{QLatin1StringView("fr"), QLatin1StringView("fr")},
    Language{QLatin1StringView("es"), QLatin1StringView("es")},
    Language{QLatin1StringView("it"), QLatin1StringView("it")},
    Language{QLatin1StringView("pt"), QLatin1StringView("pt_BR")},
    Language{QLatin1StringView("nl"), QLatin1StringView("nl")},
    Language{QLatin1StringView("pl"), QLatin1StringView("pl")},
    Language{QLatin1StringView("ru"), QLatin1StringView("ru")},
};

/// The languages that users can choose, in the order of menus.
inline constexpr std::span<const Language> targetLanguages{languages.data(), 5};
static_assert(targetLanguages.back().isTarget() && !languages[targetLanguages.size()].isTarget());

/// The target language of a code, compared exactly; nullptr if there is none.
const Language *targetLanguage(QStringView code);

/// The name of a language in that language, as "日本語" for "ja". The code itself if there is none.
QString ownLanguageName(const QString &code);

} // namespace lucentra
