#include "ResizeHandle.h"

#include <QMouseEvent>

#include <utility>

namespace lucentra {

namespace {

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

ResizeHandle::ResizeHandle(Qt::Edges edges, Callbacks callbacks, QWidget *parent)
    : QWidget(parent)
    , m_edges(edges)
    , m_callbacks(std::move(callbacks))
{
    setCursor(cursorFor(edges));
}

QRect ResizeHandle::placeFor(Qt::Edges edges, QSize window)
{
    const bool isCorner = (edges & (Qt::LeftEdge | Qt::RightEdge)) && (edges & (Qt::TopEdge | Qt::BottomEdge));
    const bool isGrip = edges == (Qt::RightEdge | Qt::BottomEdge);
    const int depth = isGrip ? gripDepth : isCorner ? cornerDepth : edgeDepth;
    const int width = edges & (Qt::LeftEdge | Qt::RightEdge) ? depth : window.width();
    const int height = edges & (Qt::TopEdge | Qt::BottomEdge) ? depth : window.height();
    return {edges & Qt::RightEdge ? window.width() - width : 0, edges & Qt::BottomEdge ? window.height() - height : 0,
            width, height};
}

void ResizeHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_callbacks.pressed(m_edges, event->globalPosition().toPoint());
}

void ResizeHandle::mouseMoveEvent(QMouseEvent *event)
{
    m_callbacks.moved(event->globalPosition().toPoint());
}

void ResizeHandle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_callbacks.released();
}

} // namespace lucentra
