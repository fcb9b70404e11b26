#pragma once

#include "find/Convolution.h"

#include <QString>

#include <map>
#include <string>

namespace lucentra {

/// The layers of a network by name, as `training/` writes them. Throws `std::runtime_error` if the file can't be read.
std::map<std::string, Convolution, std::less<>> netLayers(const QString &path);

} // namespace lucentra
