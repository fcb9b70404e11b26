#pragma once

#include <QString>

namespace lucentra {

/// The path of the executable that users and desktops start. This process runs another one, in a folder beside its.
QString launcherPath();

} // namespace lucentra
