#pragma once

#include <QString>
#include <QStringList>

namespace lucentra {

/// The packages of recognition models that aren't installed, by their names in Debian.
QStringList missingReadingPackages();

/// The same for the models of vertical text, which fewer users need.
QStringList missingVerticalPackages();

/// The languages, as tags, that can be read.
QStringList readableLanguages();

/// The command that installs packages on this distribution, given by their names in Debian; the names alone if its
/// package manager is unknown.
QString installCommand(const QStringList &packages);

} // namespace lucentra
