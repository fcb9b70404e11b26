#include "CapsuleButton.h"

#include "Symbol.h"

#include <QPainter>

namespace lucentra {

namespace {

constexpr double symbolSide = 16;
constexpr int textPixels = 12;
constexpr double foregroundOpacity = 0.85;
constexpr double pressedScale = 0.94;

double groundOpacity(bool isDown, bool isUnderPointer)
{
    return isDown ? 0.18 : isUnderPointer ? 0.10 : 0;
}

} // namespace

CapsuleButton::CapsuleButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFixedSize(side, side);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    QFont bold = font();
    bold.setPixelSize(textPixels);
    bold.setBold(true);
    setFont(bold);
}

void CapsuleButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

void CapsuleButton::describe(const QString &label, const QString &toolTip)
{
    setAccessibleName(label);
    setToolTip(toolTip);
}

void CapsuleButton::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void CapsuleButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity);
    const QRectF whole = rect();
    painter.setPen(hasFocus() ? QPen(QColor(255, 255, 255, 210), 1.5) : QPen(Qt::NoPen));
    painter.setBrush(QColor::fromRgbF(1, 1, 1, float(groundOpacity(isDown(), underMouse()))));
    painter.drawEllipse(whole.adjusted(1.5, 1.5, -1.5, -1.5));

    painter.translate(whole.center());
    if (isDown())
        painter.scale(pressedScale, pressedScale);
    painter.setOpacity(m_opacity * foregroundOpacity);
    if (!m_symbol.isEmpty()) {
        paintSymbol(painter, m_symbol, {-symbolSide / 2, -symbolSide / 2, symbolSide, symbolSide});
        return;
    }
    painter.setPen(Qt::white);
    painter.drawText(whole.translated(-whole.center()), Qt::AlignCenter, text());
}

} // namespace lucentra
