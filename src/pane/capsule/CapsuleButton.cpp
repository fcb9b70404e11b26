#include "CapsuleButton.h"

#include "Symbol.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace lucentra {

namespace {

constexpr double symbolSide = 16;
constexpr int ideographPixels = 13;
constexpr int letterPixels = 12;
constexpr double foregroundOpacity = 0.85;
constexpr double pressedScale = 0.94;
constexpr double pressedGround = 0.18;
constexpr double hoveredGround = 0.10;
constexpr std::chrono::milliseconds pressTime{80};
constexpr QPointF signCentre(9, -8);
constexpr double signRadius = 3.5;

/// An ideograph of this size needs thin strokes and no hinting, which would fill its small gaps.
QFont labelFont(const QString &text, QFont font)
{
    const bool isLatin = !text.isEmpty() && text.front().script() == QChar::Script_Latin;
    font.setPixelSize(isLatin ? letterPixels : ideographPixels);
    font.setWeight(isLatin ? QFont::DemiBold : QFont::Normal);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

CapsuleButton::CapsuleButton(QWidget *parent)
    : QAbstractButton(parent)
    , m_pressure(0, pressTime, QEasingCurve::OutSine, [this] { update(); })
{
    setFixedSize(side, side);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    connect(this, &QAbstractButton::pressed, this, [this] { m_pressure.moveTo(1, !m_reduceMotion); });
    connect(this, &QAbstractButton::released, this, [this] { m_pressure.moveTo(0, !m_reduceMotion); });
    m_change.setStartValue(0.0);
    m_change.setEndValue(1.0);
    connect(&m_change, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_presence = value.toDouble();
        update();
    });
}

void CapsuleButton::setSymbol(const QString &symbol, const SymbolChange &change)
{
    if (symbol == m_symbol)
        return;
    m_previousSymbol = std::exchange(m_symbol, symbol);
    m_change.stop();
    m_change.setDuration(int(change.duration.count()));
    m_change.setEasingCurve(change.curve);
    m_smallestScale = change.smallestScale;
    m_presence = 1;
    if (!m_reduceMotion && isVisible() && m_opacity > 0)
        m_change.start();
    update();
}

void CapsuleButton::describe(const QString &label, const QString &toolTip)
{
    setAccessibleName(label);
    setToolTip(toolTip);
}

void CapsuleButton::setSign(Sign sign)
{
    m_sign = sign;
    update();
}

void CapsuleButton::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

bool CapsuleButton::event(QEvent *event)
{
    // The capsule itself shows the text, without delay.
    return event->type() == QEvent::ToolTip || QAbstractButton::event(event);
}

void CapsuleButton::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            click();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->ignore(); // the capsule's own
        break;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void CapsuleButton::paintEvent(QPaintEvent *)
{
    if (m_opacity <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_pressure.value() > 0 || m_presence < 1);
    const QRectF whole = rect();
    painter.translate(whole.center());
    const double pressScale = 1 - (1 - pressedScale) * m_pressure.value();
    painter.scale(pressScale, pressScale);
    painter.setOpacity(m_opacity);
    painter.setPen(hasFocus() ? QPen(QColor(255, 255, 255, 210), 1.5) : QPen(Qt::NoPen));
    const double resting = underMouse() ? hoveredGround : 0;
    painter.setBrush(QColor::fromRgbF(1, 1, 1, float(resting + (pressedGround - resting) * m_pressure.value())));
    painter.drawEllipse(QPointF(), side / 2.0 - 1.5, side / 2.0 - 1.5);
    if (m_presence < 1)
        paintContent(painter, m_previousSymbol, 1 - m_presence);
    paintContent(painter, m_symbol, m_presence);
    if (m_sign == Sign::None)
        return;
    painter.setPen(QPen(QColor(20, 24, 32), 1));
    painter.setBrush(m_sign == Sign::Live ? QColor(64, 214, 120) : QColor(255, 176, 32));
    painter.drawEllipse(signCentre, signRadius, signRadius);
}

void CapsuleButton::paintContent(QPainter &painter, const QString &symbol, double presence) const
{
    const double scale = m_smallestScale + (1 - m_smallestScale) * presence;
    painter.save();
    painter.scale(scale, scale);
    painter.setOpacity(m_opacity * foregroundOpacity * presence);
    if (!symbol.isEmpty()) {
        paintSymbol(painter, symbol, {-symbolSide / 2, -symbolSide / 2, symbolSide, symbolSide});
    } else {
        const QFont label = labelFont(text(), font());
        painter.setFont(label);
        painter.setPen(Qt::white);
        const QRectF ink = QFontMetricsF(label).tightBoundingRect(text()); // centred by its ink
        painter.drawText(QPointF(std::round(-ink.center().x()), std::round(-ink.center().y())), text());
    }
    painter.restore();
}

} // namespace lucentra
