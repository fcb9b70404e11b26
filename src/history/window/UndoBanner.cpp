#include "UndoBanner.h"

#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace lucentra {

namespace {

constexpr std::chrono::milliseconds animationTime{150};
constexpr int outerMargin = 12;
constexpr int bannerRadius = 10;

} // namespace

UndoBanner::UndoBanner()
    : m_label(new QLabel(this))
    , m_button(new QPushButton(this))
    , m_opacity(new QGraphicsOpacityEffect(this))
    , m_progress(0, animationTime, QEasingCurve::OutQuad, [this] { progressChanged(); })
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
    connect(m_button, &QPushButton::clicked, this, [this] { onPressed(); });
    progressChanged();
}

void UndoBanner::setMessage(const QString &message)
{
    const bool isShown = !message.isEmpty();
    if (isShown) {
        m_label->setText(message);
        show();
    }
    m_button->setEnabled(isShown);
    m_progress.moveTo(isShown ? 1 : 0, true);
}

void UndoBanner::setButtonText(const QString &text)
{
    m_button->setText(text);
}

QSize UndoBanner::sizeHint() const
{
    return layout()->sizeHint();
}

void UndoBanner::progressChanged()
{
    setFixedHeight(qRound(sizeHint().height() * m_progress.value()));
    m_opacity->setOpacity(m_progress.value());
    m_opacity->setEnabled(m_progress.value() < 1);
    setVisible(m_progress.value() > 0);
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
