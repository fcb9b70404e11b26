#pragma once

#include <QString>

namespace lucentra {

/// Has the program's windows draw what the desktop's own font lacks with the same families as the overlays: in the
/// shapes of the interface language's region, and in bold where bold is asked for. The language is given by the code of
/// its string table; windows that are open learn of it.
void useInterfaceFont(const QString &languageCode);

} // namespace lucentra
