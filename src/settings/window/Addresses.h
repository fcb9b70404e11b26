#pragma once

#include <QString>
#include <QUrl>

namespace lucentra {

/// The page of the program's privacy policy in the language, or in English if there is none.
QUrl privacyPage(const QString &pagesFolder, const QString &languageCode);

} // namespace lucentra
