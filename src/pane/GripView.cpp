#include "GripView.h"

#include <QPainter>

namespace lucentra {

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
    const QPointF corner(width() - 6, height() - 20);
    painter.drawLine(corner + QPointF(0, 14), corner + QPointF(-14, 0));
    painter.drawLine(corner + QPointF(-4.5, 9.5), corner + QPointF(-9.5, 4.5));
    painter.drawLine(corner + QPointF(-9, 5), corner + QPointF(-5, 9));
}

} // namespace lucentra
