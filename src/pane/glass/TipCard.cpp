#include "TipCard.h"

#include "BalancedLines.h"
#include "CardButton.h"
#include "GlassBackdropView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace lucentra {

namespace {

constexpr int tipPixels = 13;
constexpr int padding = 12;
constexpr int gap = 6;
constexpr int sideDistance = 12; ///< between the card and the pane's sides
constexpr double tipRadius = 11;
constexpr double tipOutline = 0.8;

} // namespace

TipCard::TipCard(const QString &text, const QString &actionTitle, const QString &closeTitle,
                 const GlassBackdropView &glass, QWidget *parent)
    : QWidget(parent)
    , m_glass(glass)
    , m_label(addCardLabel(text, tipPixels, QFont::Normal, 0.92, this))
{
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding - 2, padding, padding - CardButton::ringRoom);
    column->setSpacing(gap);
    column->addWidget(m_label);
    auto *row = new QHBoxLayout;
    row->setSpacing(gap - CardButton::ringRoom);
    row->addStretch();
    if (!actionTitle.isEmpty()) {
        auto *action = new CardButton(actionTitle, CardButton::Look::Accent, this);
        connect(action, &QPushButton::clicked, this, [this] {
            onAction();
            onClosed();
        });
        row->addWidget(action);
    }
    auto *closing = new CardButton(closeTitle, CardButton::Look::Plain, this);
    connect(closing, &QPushButton::clicked, this, [this] { onClosed(); });
    row->addWidget(closing);
    column->addLayout(row);
    setAccessibleName(text);
}

QSize TipCard::sizeOn(int paneWidth) const
{
    const int widest = std::min(greatestWidth, paneWidth - 2 * sideDistance) - 2 * padding;
    const int text =
        balancedSize(QFontMetrics(m_label->font()), {widest, 1 << 16}, Qt::TextWordWrap, m_label->text()).width() + 1;
    const int width = std::max(minimumSizeHint().width(), text + 2 * padding);
    return {width, layout()->heightForWidth(width)};
}

void TipCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double inset = tipOutline / 2;
    m_glass.paintSurface(painter, rect(), tipRadius, *this);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.22F), tipOutline));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), tipRadius, tipRadius);
}

} // namespace lucentra
