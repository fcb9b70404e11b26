#include "CapsuleTooltip.h"

#include "BalancedLines.h"
#include "SoftShadow.h"
#include "Spring.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int fontPixels = 12;
constexpr int sidePadding = 8;
constexpr int verticalPadding = 4;
constexpr double cornerRadius = 6;
constexpr int distanceFromLeft = 8;
constexpr int greatestWidth = 280;
constexpr int textFlags = Qt::AlignCenter | Qt::TextWordWrap;
constexpr int belowCapsule = 6;
constexpr int shadowRoom = 8;
constexpr double smallestScale = 0.9;
constexpr double descent = 6; ///< how far above its place the bubble begins, points
constexpr auto response = 300ms;

const SoftShadow bubbleShadow{.opacity = 0.2, .deviation = 2, .offset = {0, 2}};
const QColor bubbleColor = QColor::fromRgbF(0, 0, 0, 0.75F);

} // namespace

CapsuleTooltip::CapsuleTooltip(QWidget *parent)
    : PassThroughContainerView(parent)
    , m_presence(0, springTime(response), springCurve(), [this] { presenceChanged(); })
{
    QFont medium = font();
    medium.setPixelSize(fontPixels);
    medium.setWeight(QFont::Medium);
    setFont(medium);
    hide();
}

void CapsuleTooltip::showText(const QString &text, const QRect &capsule)
{
    if (text == m_text && capsule == m_capsule)
        return;
    m_text = text;
    m_capsule = capsule;
    const int room = std::min(greatestWidth, capsule.right() - distanceFromLeft) - 2 * sidePadding;
    const QSize size = balancedSize(QFontMetrics(font()), {room, 1 << 16}, textFlags, text) +
                       QSize(2 * sidePadding, 2 * verticalPadding);
    const QPoint corner(capsule.right() + 1 - size.width(), capsule.bottom() + 1 + belowCapsule);
    setGeometry(QRect(corner, size).adjusted(-shadowRoom, -shadowRoom, shadowRoom, shadowRoom));
    renderPicture();
    show();
    raise();
    m_presence.moveTo(1, !m_reduceMotion);
}

void CapsuleTooltip::hideText()
{
    if (m_text.isEmpty())
        return;
    m_text.clear();
    m_presence.moveTo(0, !m_reduceMotion);
}

void CapsuleTooltip::presenceChanged()
{
    if (m_presence.value() <= 0 && m_text.isEmpty())
        hide();
    update();
}

void CapsuleTooltip::renderPicture()
{
    m_picture = bubbleShadow.under(size(), devicePixelRatioF(), [this](QPainter &painter) {
        const QRect bubble = rect().adjusted(shadowRoom, shadowRoom, -shadowRoom, -shadowRoom);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(bubbleColor);
        painter.drawRoundedRect(bubble, cornerRadius, cornerRadius);
        painter.setFont(font());
        painter.setPen(Qt::white);
        painter.drawText(bubble.adjusted(sidePadding, 0, -sidePadding, 0), textFlags, m_text);
    });
}

void CapsuleTooltip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(m_presence.value());
    const QPointF center = QRectF(rect()).center();
    const double scale = smallestScale + (1 - smallestScale) * m_presence.value();
    painter.translate(center.x(), center.y() - descent * (1 - m_presence.value()));
    painter.scale(scale, scale);
    painter.drawImage(-center, m_picture);
}

} // namespace lucentra
