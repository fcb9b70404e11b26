#pragma once

#include <QByteArray>

namespace lucentra {

/// Whether a binary property list can be read at a bounded cost. Its objects refer to one another, and each reference
/// is read as a copy of its own: some kilobytes can thus stand for gigabytes, or for an object within itself.
bool isTameBinaryPropertyList(const QByteArray &content);

} // namespace lucentra
