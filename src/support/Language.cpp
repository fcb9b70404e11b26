#include "Language.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

const Language *targetLanguage(QStringView code)
{
    const auto found = std::find_if(targetLanguages.begin(), targetLanguages.end(),
                                    [&](const Language &language) { return code == language.code; });
    return found == targetLanguages.end() ? nullptr : &*found;
}

QString ownLanguageName(const QString &code)
{
    if (code == u"en")
        return u"English"_s; // without a country
    const QString name = QLocale(code).nativeLanguageName();
    return name.isEmpty() ? code : name;
}

} // namespace lucentra
