#include "GripView.h"

#include <QPainter>

namespace lucentra {

namespace {

constexpr double inset = 6; ///< of the strokes' ends from the pane's edges, points

} // namespace

GripView::GripView(QWidget *parent)
    : PassThroughContainerView(parent)
{
    setFixedSize(side, side);
}

void GripView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.4F), 1.5, Qt::SolidLine, Qt::RoundCap));
    const QPointF corner(width() - inset, height() - inset);
    for (const double length : {14.0, 9.0, 4.0})
        painter.drawLine(corner - QPointF(0, length), corner - QPointF(length, 0));
}

} // namespace lucentra
