#pragma once

#include <QStringList>

namespace lucentra {

// See `Engines`.
QStringList readableLanguages();
QStringList missingReadingPackages();
QStringList missingVerticalPackages();

} // namespace lucentra
