#pragma once

#include <QRect>

namespace lucentra {

/// Where to show a window of a size: in the middle of the screen, or beside the pane if the pane covers less of the
/// window there. `pane` is empty if it is hidden. Global points.
QPoint uncoveredPlace(const QSize &size, const QRect &screen, const QRect &pane);

} // namespace lucentra
