#pragma once

#include <QString>
#include <QUrl>

namespace lucentra {

/// Where the program's privacy policy lies, in the language, in English where there is none.
QUrl privacyPage(const QString &pagesFolder, const QString &languageCode);

} // namespace lucentra
