#include "NeonBorderView.h"

#include "Settings.h"
#include "SettingsStore.h"
#include "Spring.h"

#include <QEasingCurve>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace lucentra {

namespace {

double pulseOpacity(double phase)
{
    const double way = 1 - std::abs(2 * phase - 1); // up in the first half, down in the second
    const double eased = QEasingCurve(QEasingCurve::InOutSine).valueForProgress(way);
    return NeonBorderView::leastPulse + (NeonBorderView::greatestPulse - NeonBorderView::leastPulse) * eased;
}

} // namespace

NeonBorderView::NeonBorderView(const SettingsStore &settings, QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pulse.setStartValue(0.0);
    m_pulse.setEndValue(1.0);
    m_pulse.setDuration(2 * pulseWayMilliseconds);
    m_pulse.setLoopCount(-1);
    connect(&m_pulse, &QVariantAnimation::valueChanged, this, [this](const QVariant &phase) {
        const double opacity = pulseOpacity(phase.toDouble());
        if (isVisibleStep(m_glowOpacity, opacity, -1)) // it never ends
            setGlowOpacity(opacity);
    });
    settings.observe(notifications::updateNeonBorder, this, [this] { updateColor(); });
    updateColor();
}

void NeonBorderView::updateColor()
{
    m_style = neonBorderStyle(m_settings.read(settings::neonBorderColor));
    m_pictureScale = 0;
    update();
    updatePulse();
}

void NeonBorderView::updatePulse()
{
    m_pulse.stop();
    setGlowOpacity(m_style.glowOpacity);
    if (isProcessing && isVisible() && m_style.isVisible() && !m_displayOptions.reduceMotion)
        m_pulse.start();
}

void NeonBorderView::accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options)
{
    m_displayOptions = options;
    updatePulse();
}

void NeonBorderView::paintEvent(QPaintEvent *event)
{
    if (!m_style.isVisible())
        return;
    if (m_pictureScale != devicePixelRatioF()) {
        m_pictureScale = devicePixelRatioF();
        m_line = FramePicture::line(m_style, m_pictureScale);
        m_glow = FramePicture::glow(m_style, m_pictureScale);
    }
    QPainter painter(this);
    for (const QRect &part : event->region()) {
        painter.setClipRect(part); // drawing a picture into a rectangle is several times faster than into a region
        m_glow.paint(painter, rect(), m_glowOpacity);
        m_line.paint(painter, rect(), 1);
    }
}

void NeonBorderView::showEvent(QShowEvent *)
{
    updatePulse();
}

void NeonBorderView::hideEvent(QHideEvent *)
{
    updatePulse();
}

void NeonBorderView::setGlowOpacity(double opacity)
{
    m_glowOpacity = opacity;
    update(glowRegion());
}

QRegion NeonBorderView::glowRegion() const
{
    constexpr int d = FramePicture::depth;
    return QRegion(rect()).subtracted(rect().adjusted(d, d, -d, -d));
}

} // namespace lucentra
