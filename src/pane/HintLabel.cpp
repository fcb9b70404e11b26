#include "HintLabel.h"

#include "SoftShadow.h"

#include <QFont>
#include <QPainter>

namespace lucentra {

namespace {

constexpr int fontPixels = 18;
constexpr int sidePadding = 24;
constexpr int verticalPadding = 12;
constexpr int shadowRoom = 6;
constexpr int textFlags = Qt::AlignCenter | Qt::TextWordWrap;

const SoftShadow textShadow{.color = QColor::fromRgbF(0, 0, 0, 0.65F), .radius = 3, .offset = {0, 1}};

} // namespace

HintLabel::HintLabel(const QString &text, QWidget *parent)
    : PassThroughHostingView(
          text, [this](QPainter &painter) { paintText(painter); }, parent)
{
    QFont hintFont = font();
    hintFont.setPixelSize(fontPixels);
    hintFont.setWeight(QFont::DemiBold);
    setFont(hintFont);
}

void HintLabel::fadeOut(std::chrono::milliseconds duration, QEasingCurve::Type easing)
{
    m_fade.setStartValue(m_opacity);
    m_fade.setEndValue(0.0);
    m_fade.setDuration(int(duration.count()));
    m_fade.setEasingCurve(easing);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_opacity = value.toDouble();
        update();
    });
    connect(&m_fade, &QVariantAnimation::finished, this, &QObject::deleteLater);
    m_fade.start();
}

void HintLabel::paintText(QPainter &painter)
{
    const QRect place = textRect();
    if (m_picture.size() != (QSizeF(place.size()) * devicePixelRatioF()).toSize()) {
        m_picture = textShadow.under(place.size(), devicePixelRatioF(), [&](QPainter &onPicture) {
            onPicture.setFont(font());
            onPicture.setPen(QColor::fromRgbF(1, 1, 1, 0.95F));
            onPicture.drawText(QRect({}, place.size()), textFlags, text());
        });
    }
    painter.setOpacity(m_opacity);
    painter.drawImage(place.topLeft(), m_picture);
}

QRect HintLabel::textRect() const
{
    const QRect room = rect().adjusted(sidePadding, verticalPadding, -sidePadding, -verticalPadding);
    return fontMetrics()
        .boundingRect(room, textFlags, text())
        .adjusted(-shadowRoom, -shadowRoom, shadowRoom, shadowRoom);
}

} // namespace lucentra
