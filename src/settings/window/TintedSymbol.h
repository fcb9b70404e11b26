#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace lucentra {

/// One of the program's own line drawings ("gearshape", "book", ...) in the palette's text colours, sharp at any scale.
/// Main thread only.
QIcon tintedSymbol(const QString &name, const QPalette &palette);

} // namespace lucentra
