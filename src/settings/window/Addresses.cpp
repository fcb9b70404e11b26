#include "Addresses.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace lucentra {

QUrl privacyPage(const QString &pagesFolder, const QString &languageCode)
{
    const auto path = [&](const QString &language) { return pagesFolder + u"/privacy_"_s + language + u".html"_s; };
    const QString own = path(languageCode);
    return QUrl::fromLocalFile(QFileInfo::exists(own) ? own : path(u"en"_s));
}

} // namespace lucentra
