#include "GlassErrorCard.h"

#include "CardButton.h"
#include "GlassBackdropView.h"
#include "SoftShadow.h"
#include "Symbol.h"
#include "Text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTextDocument>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr int cardShadowRoom = 36;
constexpr double cornerRadius = 14;
constexpr int titlePixels = 15;
constexpr int messagePixels = 13;
constexpr int symbolSide = 17;
constexpr int symbolGap = 7;
constexpr int buttonHeight = CardButton::groundHeight;
constexpr int ringRoom = CardButton::ringRoom;
constexpr double outlineWidth = 0.5;
constexpr int distanceFromTop = 32; ///< beneath the window's buttons
constexpr int distanceFromBottom = 4;

const SoftShadow cardShadow{.opacity = 0.22, .deviation = 14, .offset = {0, 6}};
const QColor outlineColor = QColor::fromRgbF(1, 1, 1, 0.18F);

/// Adds places to break within words that are wider than a line, such as addresses.
QString breakable(const QString &text)
{
    constexpr int longestWhole = 24;
    constexpr QChar zeroWidthSpace(0x200B);
    QString result;
    int length = 0;
    for (const QChar c : text) {
        if (length == longestWhole && !c.isLowSurrogate() && !c.isMark()) {
            result += zeroWidthSpace;
            length = 0;
        }
        length = c.isSpace() ? 0 : std::min(length + 1, longestWhole);
        result += c;
    }
    return result;
}

int wrappedHeight(const QFont &font, const QString &text, int width)
{
    return QFontMetrics(font).boundingRect(0, 0, width, 1 << 20, Qt::TextWordWrap, text).height();
}

/// Cuts the text off with an ellipsis if it doesn't fit the height.
QString fittedText(const QFont &font, const QString &text, int width, int height)
{
    if (wrappedHeight(font, text, width) <= height)
        return text;
    const auto cutOff = [&](qsizetype count) { return firstCharacters(text, count).trimmed() + u'…'; };
    qsizetype fitting = 0;
    qsizetype tooMany = characterCount(text);
    while (tooMany - fitting > 1) {
        const qsizetype middle = (fitting + tooMany) / 2;
        (wrappedHeight(font, cutOff(middle), width) <= height ? fitting : tooMany) = middle;
    }
    return cutOff(fitting);
}

/// One element for the whole card: its texts are its name and description, and only the button is a child.
class AccessibleCard : public QAccessibleWidget
{
public:
    explicit AccessibleCard(QWidget *card)
        : QAccessibleWidget(card, QAccessible::AlertMessage)
    {
    }

    int childCount() const override { return button() ? 1 : 0; }
    QAccessibleInterface *child(int index) const override
    {
        return index == 0 && button() ? QAccessible::queryAccessibleInterface(button()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child && button() && child->object() == button() ? 0 : -1;
    }

private:
    QPushButton *button() const { return widget()->findChild<QPushButton *>(); }
};

QAccessibleInterface *accessibleCard(const QString &, QObject *object)
{
    auto *card = dynamic_cast<GlassErrorCard *>(object);
    return card ? new AccessibleCard(card) : nullptr;
}

} // namespace

GlassErrorCard::GlassErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                               std::function<void()> action, const GlassBackdropView &glass, QWidget *parent)
    : QWidget(parent)
    , m_glass(glass)
    , m_message(message)
    , m_titleLabel(addCardLabel(title, titlePixels, QFont::DemiBold, 0.95, this))
    , m_messageLabel(addCardLabel(message, messagePixels, QFont::Normal, 0.72, this))
{
    static const bool isInstalled = (QAccessible::installFactory(accessibleCard), true);
    Q_UNUSED(isInstalled);
    setAccessibleName(title);
    setAccessibleDescription(message);
    if (actionTitle.isEmpty())
        return;
    m_button = new CardButton(actionTitle, CardButton::Look::Accent, this);
    connect(m_button, &QPushButton::clicked, this, [action = std::move(action)] {
        const auto kept = action; // it may delete the card and this function with it
        if (kept)
            kept();
    });
}

void GlassErrorCard::placeOn(QSize pane)
{
    const int width = std::max(leastWidth, std::min(greatestWidth, pane.width() - 2 * sideDistance));
    const int greatestHeight = pane.height() - distanceFromTop - distanceFromBottom;
    int height = layOut(width, greatestHeight, {16, 10, false});
    if (height > greatestHeight)
        height = layOut(width, greatestHeight, {9, 4, true});
    const int centred = (pane.height() - height) / 2 + belowCenter;
    const int top = std::max(distanceFromTop, std::min(centred, pane.height() - distanceFromBottom - height));
    setGeometry(QRect((pane.width() - width) / 2, top, width, height)
                    .adjusted(-cardShadowRoom, -cardShadowRoom, cardShadowRoom, cardShadowRoom));
    update();
}

QRect GlassErrorCard::cardRect() const
{
    return geometry().adjusted(cardShadowRoom, cardShadowRoom, -cardShadowRoom, -cardShadowRoom);
}

int GlassErrorCard::layOut(int width, int greatestHeight, Form form)
{
    const QSize button = m_button ? QSize(m_button->sizeHint().width() - 2 * ringRoom, buttonHeight) : QSize(0, 0);
    const bool isBeside = m_button && form.hasButtonBeside;
    const bool isBeneath = m_button && !form.hasButtonBeside;
    const int inner = width - 2 * form.padding;
    const int textWidth = inner - (isBeside ? button.width() + form.padding : 0);
    const QPoint corner(cardShadowRoom + form.padding, cardShadowRoom + form.padding);
    m_symbolCorner = corner + QPoint(0, 1);
    const QPoint titleCorner = corner + QPoint(symbolSide + symbolGap, 0);
    const int titleWidth = textWidth - symbolSide - symbolGap;
    const int titleHeight = wrappedHeight(m_titleLabel->font(), m_titleLabel->text(), titleWidth);
    m_titleLabel->setGeometry({titleCorner, QSize(titleWidth, titleHeight)});

    const int around = 2 * form.padding + titleHeight + form.gap + (isBeneath ? form.gap + buttonHeight : 0);
    const int oneLine = wrappedHeight(m_messageLabel->font(), u"…"_s, textWidth);
    const int room = std::max(oneLine, greatestHeight - around);
    const QString message = breakable(m_message);
    const QString shown = fittedText(m_messageLabel->font(), message, textWidth, room);
    m_messageLabel->setText(shown);
    // Escaped, since a tool tip would interpret a service's message as HTML and load pictures.
    m_messageLabel->setToolTip(shown == message ? QString()
                                                : Qt::convertFromPlainText(m_message, Qt::WhiteSpaceNormal));
    const int messageHeight = wrappedHeight(m_messageLabel->font(), shown, textWidth);
    m_messageLabel->setGeometry({corner + QPoint(0, titleHeight + form.gap), QSize(textWidth, messageHeight)});

    const int height = around + messageHeight;
    if (m_button) {
        const QPoint place = isBeside
                                 ? QPoint(corner.x() + inner - button.width(), cardShadowRoom + (height - buttonHeight) / 2)
                                 : QPoint(corner.x(), cardShadowRoom + height - form.padding - buttonHeight);
        m_button->setGeometry(QRect(place, button).adjusted(-ringRoom, -ringRoom, ringRoom, ringRoom));
    }
    return height;
}

void GlassErrorCard::paintEvent(QPaintEvent *)
{
    const QRectF card = rect().adjusted(cardShadowRoom, cardShadowRoom, -cardShadowRoom, -cardShadowRoom);
    if (m_shadow.size() != (QSizeF(size()) * devicePixelRatioF()).toSize()) {
        m_shadow = cardShadow.under(size(), devicePixelRatioF(), [&](QPainter &painter) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(Qt::black);
            painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
        });
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(0, 0, m_shadow);
    m_glass.paintSurface(painter, card, cornerRadius, *this);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(outlineColor, outlineWidth));
    constexpr double inset = outlineWidth / 2;
    painter.drawRoundedRect(card.adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    paintSymbol(painter, u"exclamationmark.triangle.fill"_s, QRectF(m_symbolCorner, QSizeF(symbolSide, symbolSide)));
}

} // namespace lucentra
