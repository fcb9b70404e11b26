#include "PhraseLanguage.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace lucentra {

namespace {

template <typename Matches>
std::optional<int> find(Matches matches)
{
    const auto found = std::find_if(phraseLanguages.begin(), phraseLanguages.end(), matches);
    return found == phraseLanguages.end() ? std::nullopt : std::optional(int(found - phraseLanguages.begin()));
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
    // The toolkit completes names: "de_DE" for "de", "zh_TW" for "zh-Hant".
    static const QStringList names = [] {
        QStringList all;
        for (const Language &language : phraseLanguages)
            all.append(QLocale(QString(language.locale)).name());
        return all;
    }();
    const qsizetype number = names.indexOf(QLocale(locale).name());
    return number < 0 ? std::nullopt : std::optional(int(number));
}

bool isEnglish(QStringView code)
{
    return code == u"en" || code.startsWith(u"en-");
}

} // namespace lucentra
