#include "ProgressIndicator.h"

#include <QPainter>

#include <utility>

namespace lucentra {

namespace {

constexpr int side = 30; // points
constexpr int spokes = 10;
constexpr int turnMilliseconds = 1000;
constexpr double innerRadius = 3.6;
constexpr double outerRadius = 7;
constexpr double smallestScale = 0.85;

} // namespace

ProgressIndicator::ProgressIndicator(QWidget *parent)
    : QProgressBar(parent)
{
    setRange(0, 0);
    setTextVisible(false);
    setFixedSize(side, side);
    m_turn.setStartValue(0);
    m_turn.setEndValue(spokes);
    m_turn.setDuration(turnMilliseconds);
    m_turn.setLoopCount(-1);
    connect(&m_turn, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        const int step = value.toInt() % spokes;
        if (std::exchange(m_step, step) != step)
            update();
    });
}

void ProgressIndicator::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void ProgressIndicator::setPresence(double presence)
{
    m_presence = presence;
    update();
}

void ProgressIndicator::setTurning(bool turning)
{
    if (!turning)
        m_turn.stop();
    else if (m_turn.state() != QAbstractAnimation::Running)
        m_turn.start();
}

void ProgressIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const double scale = smallestScale + (1 - smallestScale) * m_presence;
    painter.scale(scale, scale);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap));
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (m_step - spoke + spokes) % spokes;
        painter.setOpacity(m_opacity * m_presence * (0.95 - 0.75 * age / (spokes - 1)));
        painter.save();
        painter.rotate(360.0 * spoke / spokes);
        painter.drawLine(QPointF(0, -innerRadius), QPointF(0, -outerRadius));
        painter.restore();
    }
}

} // namespace lucentra
