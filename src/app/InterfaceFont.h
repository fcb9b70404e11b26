#pragma once

#include <QString>

namespace lucentra {

/// Makes the program's windows draw characters that the desktop's font lacks with the same families as the overlays: in
/// the shapes of the interface language's region, and in bold if requested. The language is the code of its string
/// table. Open windows are updated.
void useInterfaceFont(const QString &languageCode);

} // namespace lucentra
