#pragma once

#include <QRect>
#include <QWidget>

#include <functional>

namespace lucentra {

/// An invisible strip along an edge of the window, or a square in a corner, by which the window is resized.
class ResizeHandle : public QWidget
{
public:
    /// How far the handles reach into the pane, in points. The handle of the lower right corner covers the drawn grip.
    static constexpr int edgeDepth = 5;
    static constexpr int cornerDepth = 12;
    static constexpr int gripDepth = 22;

    /// `pressed` is called with the edges when the left button goes down on the handle, then, unless the window manager
    /// takes over, `moved` with the pointer's place on the screen, and `released` at the end.
    struct Callbacks
    {
        std::function<void(Qt::Edges, QPoint)> pressed;
        std::function<void(QPoint)> moved;
        std::function<void()> released;
    };

    ResizeHandle(Qt::Edges edges, Callbacks callbacks, QWidget *parent);

    Qt::Edges edges() const { return m_edges; }
    /// The place of the handle for some edges in a window of that size.
    static QRect placeFor(Qt::Edges edges, QSize window);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    const Qt::Edges m_edges;
    const Callbacks m_callbacks;
};

} // namespace lucentra
