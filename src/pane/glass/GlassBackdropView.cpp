#include "GlassBackdropView.h"

#include "PaneShape.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTransform>

#include <utility>

namespace lucentra {

namespace {

/// The colour of surfaces on the glass.
const QColor surfaceGrey(66, 70, 79, 168);

/// Around the glass's picture, in its pixels: at their edge pictures that are repeated blend with the other side.
constexpr int glassMargin = 2;

constexpr std::chrono::milliseconds opacityTime{250};

} // namespace

GlassBackdropView::GlassBackdropView(QWidget *parent)
    : QWidget(parent)
    , m_opacity(1, opacityTime, QEasingCurve::InOutSine, [this] { makeStale(); })
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void GlassBackdropView::setContent(const QImage &content)
{
    m_content = content;
    FrostedBackdrop dark(content, devicePixelRatioF());
    if (m_isComposited && dark.looksLike(m_dark))
        return; // a caret that blinks beneath
    m_dark = std::move(dark);
    m_frosted = m_dark.in(m_frosted.tone());
    ++m_surfaceVersion;
    makeStale();
}

void GlassBackdropView::setTone(GlassTone tone)
{
    if (tone == m_frosted.tone())
        return;
    m_frosted = m_dark.in(tone);
    makeStale();
}

void GlassBackdropView::makeStale()
{
    m_isGlassStale = true;
    update();
}

void GlassBackdropView::setCalmAreas(const QList<CalmArea> &areas)
{
    if (areas == m_calmAreas)
        return;
    m_calmAreas = areas;
    m_calmMask = {};
    makeStale();
}

void GlassBackdropView::setOpacity(double opacity, bool animated)
{
    m_opacity.moveTo(opacity, animated && isVisible());
}

void GlassBackdropView::setOpaque(bool opaque)
{
    m_isOpaque = opaque;
    ++m_surfaceVersion;
    makeStale();
}

void GlassBackdropView::paintSurface(QPainter &painter, const QRectF &surface, double radius, const QWidget &view) const
{
    const QRectF glass(view.mapFrom(parentWidget(), pos()), size());
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const QBrush &brush : {(m_isOpaque ? FrostedBackdrop() : m_dark).brush(glass), QBrush(surfaceGrey)}) {
        painter.setBrush(brush);
        painter.drawRoundedRect(surface, radius, radius);
    }
}

void GlassBackdropView::setComposited(bool composited)
{
    m_isComposited = composited;
    update();
}

void GlassBackdropView::paintEvent(QPaintEvent *event)
{
    if (m_isGlassStale)
        renderGlass();
    constexpr double margin = glassMargin / softScale;
    QBrush glass(m_glass);
    glass.setTransform(QTransform::fromTranslate(-margin, -margin).scale(1 / softScale, 1 / softScale));
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    for (const QRect &part : event->region()) {
        painter.setClipRect(part); // drawing into a rectangle is several times faster than into a region
        if (!m_isComposited)
            paintContent(painter);
        painter.setPen(Qt::NoPen);
        painter.setBrush(glass);
        painter.drawRoundedRect(rect(), paneCornerRadius, paneCornerRadius);
        if (tone() == GlassTone::Light) { // whose border isn't seen on a light screen
            painter.setPen(QColor(0, 0, 0, 70));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), paneCornerRadius, paneCornerRadius);
        }
    }
}

void GlassBackdropView::resizeEvent(QResizeEvent *)
{
    m_calmMask = {};
    makeStale();
}

void GlassBackdropView::renderGlass()
{
    m_isGlassStale = false;
    const QSize pixels = (QSizeF(size()) * softScale).toSize() + 2 * QSize(glassMargin, glassMargin);
    if (m_glass.size() != pixels)
        m_glass = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    m_glass.fill(Qt::transparent);
    QPainter painter(&m_glass);
    painter.translate(glassMargin, glassMargin);
    painter.scale(softScale, softScale);
    constexpr double margin = glassMargin / softScale;
    paintGlass(painter, m_isOpaque ? FrostedBackdrop(m_frosted.tone()) : m_frosted,
               QRectF(rect()).adjusted(-margin, -margin, margin, margin), m_isOpaque ? 1 : m_opacity.value());
    if (!m_isOpaque && hasContent() && !m_calmAreas.isEmpty())
        calm(painter);
}

void GlassBackdropView::calm(QPainter &painter)
{
    const bool joined = areCalmAreasSeen(m_opacity.value());
    if (m_calmMask.isNull() || m_isMaskJoined != joined) {
        m_calmMask = calmMask(size(), m_calmAreas, joined);
        m_isMaskJoined = joined;
    }
    paintCalmGlass(painter, m_frosted, rect(), m_calmMask, calmBounds(m_calmAreas), m_opacity.value());
}

void GlassBackdropView::paintContent(QPainter &painter)
{
    if (m_content.isNull())
        FrostedBackdrop(m_frosted.tone()).paint(painter, rect(), 1);
    else
        painter.drawImage(QRectF(QPointF(), QSizeF(m_content.size()) / devicePixelRatioF()), m_content);
}

} // namespace lucentra
