#pragma once

#include <QString>
#include <QStringList>

namespace lucentra {

/// The command that installs packages on this distribution, given by their names in Debian; the names alone if its
/// package manager is unknown.
QString installCommand(const QStringList &packages);

} // namespace lucentra
