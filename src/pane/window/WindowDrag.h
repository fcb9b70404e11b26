#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace lucentra {

/// Where a window that is dragged by its body or by an edge lies: for where no window manager does it. Points on the
/// screen.
struct WindowDrag
{
    QRect startFrame;
    QPoint startPointer;
    Qt::Edges edges; ///< none: the window is moved

    /// The frame for a place of the pointer. The edges that aren't held stay, also at the smallest size.
    QRect frameFor(QPoint pointer, QSize smallest) const;
};

} // namespace lucentra
