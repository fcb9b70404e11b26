#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace lucentra {

/// The frame of a window that is dragged by its body or an edge without a window manager. Screen points.
struct WindowDrag
{
    QRect startFrame;
    QPoint startPointer;
    Qt::Edges edges; ///< none: the window is moved

    /// The frame for a place of the pointer. Edges that aren't dragged stay in place, even at the smallest size.
    QRect frameFor(QPoint pointer, QSize smallest) const;
};

} // namespace lucentra
