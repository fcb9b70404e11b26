#include "WindowButton.h"

#include <QPainter>

namespace lucentra {

namespace {

constexpr double circleRadius = 6;
constexpr double signReach = 2.6; ///< of a sign from the circle's centre

QColor circleColor(WindowButton::Kind kind, bool isUnderPointer, bool isDown)
{
    if (isUnderPointer && kind == WindowButton::Kind::Close)
        return isDown ? QColor(190, 70, 62) : QColor(224, 92, 82);
    return QColor(255, 255, 255, isDown ? 120 : isUnderPointer ? 150 : 88);
}

} // namespace

WindowButton::WindowButton(Kind kind, QWidget *parent)
    : QAbstractButton(parent)
    , m_kind(kind)
{
    setFixedSize(side, side);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
}

void WindowButton::setRevealed(bool revealed)
{
    m_isRevealed = revealed;
    update();
}

void WindowButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF center = QRectF(rect()).center();
    painter.setPen(QPen(QColor(0, 0, 0, 90), 1));
    painter.setBrush(circleColor(m_kind, underMouse(), isDown()));
    painter.drawEllipse(center, circleRadius, circleRadius);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(255, 255, 255, 220), 1.5));
        painter.drawEllipse(center, circleRadius + 1.75, circleRadius + 1.75);
    }
    if (m_isRevealed || hasFocus())
        paintSign(painter, center);
}

void WindowButton::paintSign(QPainter &painter, QPointF center) const
{
    painter.setPen(QPen(QColor(0, 0, 0, 190), 1.4, Qt::SolidLine, Qt::RoundCap));
    const QPointF across(signReach, 0);
    const QPointF down(0, signReach);
    switch (m_kind) {
    case Kind::Close: {
        const QPointF falling = (across + down) * 0.85;
        const QPointF rising = (across - down) * 0.85;
        painter.drawLine(center - falling, center + falling);
        painter.drawLine(center - rising, center + rising);
        break;
    }
    case Kind::Zoom:
        painter.drawLine(center - down, center + down);
        [[fallthrough]];
    case Kind::Minimize:
        painter.drawLine(center - across, center + across);
        break;
    }
}

} // namespace lucentra
