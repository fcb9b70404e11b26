#include "UndoBanner.h"

#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVariantAnimation>

#include <utility>

namespace lucentra {

namespace {

constexpr int animationMilliseconds = 150;
constexpr int outerMargin = 12;
constexpr int bannerRadius = 10;

} // namespace

UndoBanner::UndoBanner(QWidget *parent)
    : QFrame(parent)
    , m_label(new QLabel(this))
    , m_button(new QPushButton(this))
    , m_opacity(new QGraphicsOpacityEffect(this))
    , m_animation(new QVariantAnimation(this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(outerMargin + 14, 10 + outerMargin / 2, outerMargin + 10, 10 + outerMargin);
    row->addWidget(m_label, 1);
    row->addWidget(m_button);
    QFont font = m_label->font();
    font.setPixelSize(13);
    m_label->setFont(font);
    m_label->setTextFormat(Qt::PlainText);
    setGraphicsEffect(m_opacity);
    m_animation->setDuration(animationMilliseconds);
    m_animation->setEasingCurve(QEasingCurve::OutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { setProgress(value.toReal()); });
    connect(m_animation, &QVariantAnimation::finished, this, [this] { setVisible(m_isShown); });
    connect(m_button, &QPushButton::clicked, this, [this] { onPressed(); });
    hide();
}

void UndoBanner::setMessage(const QString &message)
{
    if (!message.isEmpty())
        m_label->setText(message);
    if (std::exchange(m_isShown, !message.isEmpty()) != m_isShown)
        animate(m_isShown);
}

void UndoBanner::setButtonText(const QString &text)
{
    m_button->setText(text);
}

QSize UndoBanner::sizeHint() const
{
    return layout()->sizeHint();
}

void UndoBanner::animate(bool shown)
{
    const qreal now = m_animation->currentValue().isValid() ? m_animation->currentValue().toReal() : 0;
    m_animation->stop();
    m_animation->setStartValue(now);
    m_animation->setEndValue(shown ? 1.0 : 0.0);
    m_button->setEnabled(shown);
    setProgress(now);
    show();
    m_animation->start();
}

/// From 0 (hidden) to 1 (shown).
void UndoBanner::setProgress(qreal progress)
{
    setFixedHeight(qRound(sizeHint().height() * progress));
    m_opacity->setOpacity(progress);
    m_opacity->setEnabled(progress < 1);
}

void UndoBanner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor tint = palette().color(QPalette::Highlight);
    tint.setAlphaF(0.16f);
    painter.setPen(Qt::NoPen);
    const QRectF area = QRectF(rect()).adjusted(outerMargin, outerMargin / 2.0, -outerMargin, -outerMargin);
    painter.setBrush(palette().base());
    painter.drawRoundedRect(area, bannerRadius, bannerRadius);
    painter.setBrush(tint);
    painter.drawRoundedRect(area, bannerRadius, bannerRadius);
}

} // namespace lucentra
