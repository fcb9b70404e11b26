#pragma once

#include "ScreenReading.h"

#include <QList>

#include <optional>

namespace lucentra {

/// How far each line of a reading has moved up or down on a later picture of the same size, in pixels (y down). Only a
/// plain shift counts, as in a list that is scrolled: the very same pixels at another place. All lines that have moved
/// have done so by the same distance. 0 for what stays or has changed at its place; nullopt for what has left the
/// picture, or is covered, while lines above or below it have moved or had moved since the reading.
QList<std::optional<int>> shiftsOf(const ScreenReading &former, const QImage &now);
bool haveMoved(const QList<std::optional<int>> &shifts);

/// The reading with its lines where they are on that picture, without those that have left it. Its picture has moved,
/// too: it differs from the new one where there is something that hasn't been read. Lines that have come from the
/// picture's top or bottom are preliminary, since a part of them may have been outside.
ScreenReading movedReading(const ScreenReading &former, const QImage &now, const QList<std::optional<int>> &shifts);

} // namespace lucentra
