#pragma once

#include <QByteArray>

namespace lucentra {

/// Whether a binary property list can be read at a bounded cost. Its objects refer to one another, and the library
/// copies an object for each reference, so that some kilobytes can expand to gigabytes or to an endless recursion.
bool isTameBinaryPropertyList(const QByteArray &content);

} // namespace lucentra
