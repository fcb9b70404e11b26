#include "HintLabel.h"

#include "BalancedLines.h"
#include "SoftShadow.h"

#include <QFont>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr int fontPixels = 18;
constexpr int sidePadding = 24;
constexpr int verticalPadding = 12;
constexpr int hintShadowRoom = 10;
constexpr int leastFontPixels = 12;
/// Kept free at the pane's upper and lower edge.
constexpr int roomForButtons = 28;
constexpr int capsuleBottom = 38;
constexpr int textFlags = Qt::AlignCenter | Qt::TextWordWrap;

/// The dark ground around a text over other text.
constexpr QMargins groundMargins(18, 11, 18, 11);
constexpr double groundRadius = 14;
const QColor groundColor(12, 17, 26);

const SoftShadow textShadow{.opacity = 0.65, .deviation = 3, .offset = {0, 1}};

/// Breaks the line at the last middle dot.
QString onTwoLines(const QString &text)
{
    static const QRegularExpression lastDot(u" ?[・·] ?(?=[^・·]*$)"_s);
    return QString(text).replace(lastDot, u"\n"_s);
}

} // namespace

HintLabel::HintLabel(const QString &text, QWidget *parent)
    : PassThroughHostingView(
          text, [this](QPainter &painter) { paintText(painter); }, parent)
    , m_opacity(1, {}, QEasingCurve::Linear, [this] {
        update();
        onOpacityChanged();
    })
{
    QFont hintFont = font();
    hintFont.setPixelSize(fontPixels);
    hintFont.setWeight(QFont::DemiBold);
    setFont(hintFont);
}

void HintLabel::fadeOut(std::chrono::milliseconds duration, QEasingCurve::Type easing)
{
    m_opacity.setDuration(int(duration.count()));
    m_opacity.setEasingCurve(easing);
    connect(&m_opacity, &QVariantAnimation::finished, this, &QObject::deleteLater);
    m_opacity.moveTo(0, true);
}

void HintLabel::paintText(QPainter &painter)
{
    const Setting shown = setting();
    const QRect place = shown.rect.adjusted(-hintShadowRoom, -hintShadowRoom, hintShadowRoom, hintShadowRoom);
    if (m_picture.size() != (QSizeF(place.size()) * devicePixelRatioF()).toSize()) {
        m_picture = textShadow.under(place.size(), devicePixelRatioF(), [&](QPainter &onPicture) {
            onPicture.setFont(shown.font);
            onPicture.setPen(QColor::fromRgbF(1, 1, 1, 0.95F));
            onPicture.drawText(shown.rect.translated(-place.topLeft()), textFlags, shown.text);
        });
    }
    painter.setOpacity(m_opacity.value());
    if (isOverText && isOverText()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(groundColor);
        painter.drawRoundedRect(shown.rect.marginsAdded(groundMargins), groundRadius, groundRadius);
    }
    painter.drawImage(place.topLeft(), m_picture);
}

QRect HintLabel::textRect() const
{
    return setting().rect;
}

HintLabel::Setting HintLabel::setting() const
{
    QFont smaller = font();
    for (int pixels = fontPixels;; --pixels) {
        smaller.setPixelSize(pixels);
        Setting found = settingIn(smaller);
        if (pixels == leastFontPixels || found.rect.height() <= height() - 2 * roomForButtons)
            return found;
    }
}

HintLabel::Setting HintLabel::settingIn(const QFont &font) const
{
    const QFontMetrics metrics(font);
    const QRect room = rect().adjusted(sidePadding, verticalPadding, -sidePadding, -verticalPadding);
    const bool fitsOneLine = metrics.horizontalAdvance(text()) <= room.width();
    const QString shown = fitsOneLine ? text() : onTwoLines(text());
    const int width = balancedSize(metrics, room.size(), textFlags, shown).width(); // avoids a last line of one word
    const QRect narrow(room.x() + (room.width() - width) / 2, room.y(), width, room.height());
    const QRect centred = metrics.boundingRect(narrow, textFlags, shown);
    // In a low pane the middle isn't clear of the capsule.
    const int highest = capsuleBottom + (isOverText && isOverText() ? groundMargins.top() : 0);
    const int down = std::max(0, std::min(highest - centred.top(), room.bottom() - centred.bottom()));
    return {shown, font, centred.translated(0, down)};
}

} // namespace lucentra
