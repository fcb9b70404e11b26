#pragma once

#include <QString>

namespace lucentra {

/// The path of the executable that users and desktops start. This process runs a different one, in a folder beside it.
QString launcherPath();

} // namespace lucentra
