#include "CardButton.h"

#include <QLabel>
#include <QPainter>

namespace lucentra {

namespace {

constexpr int labelPixels = 13;
constexpr int labelPadding = 12;
constexpr double buttonRadius = 6;

} // namespace

CardButton::CardButton(const QString &text, Look look, QWidget *parent)
    : QPushButton(text, parent)
    , m_look(look)
{
    setAutoDefault(true); // Return presses it, as Space does
    setAttribute(Qt::WA_Hover);
    QFont bold = font();
    bold.setPixelSize(labelPixels);
    bold.setWeight(QFont::DemiBold);
    setFont(bold);
}

QSize CardButton::sizeHint() const
{
    return {QFontMetrics(font()).horizontalAdvance(text()) + 2 * (labelPadding + ringRoom), groundHeight + 2 * ringRoom};
}

void CardButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ground = QRectF(rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
    painter.setPen(Qt::NoPen);
    if (m_look == Look::Accent)
        painter.setBrush(QColor(isDown() ? 0x265fc9 : underMouse() ? 0x3d7cf0 : 0x2f6fe4));
    else
        painter.setBrush(QColor::fromRgbF(1, 1, 1, isDown() ? 0.28F : underMouse() ? 0.2F : 0.12F));
    painter.drawRoundedRect(ground, buttonRadius, buttonRadius);
    painter.setPen(Qt::white);
    painter.drawText(ground, Qt::AlignCenter, text());
    if (!hasFocus())
        return;
    constexpr double ringWidth = 1.5;
    constexpr double reach = ringRoom - ringWidth / 2;
    painter.setPen(QPen(QColor(255, 255, 255, 210), ringWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(ground.adjusted(-reach, -reach, reach, reach), buttonRadius + reach, buttonRadius + reach);
}

QLabel *addCardLabel(const QString &text, int pixels, QFont::Weight weight, double opacity, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgbF(1, 1, 1, float(opacity)));
    label->setPalette(palette);
    return label;
}

} // namespace lucentra
