#include "PaneHints.h"

#include "BalancedLines.h"
#include "SoftShadow.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr auto temporaryTime = 1500ms;
constexpr auto temporaryFade = 500ms;
constexpr auto startFade = 400ms;
constexpr auto reducedFade = 120ms;

/// The time to read a character. An ideograph takes longer, but there are fewer of them.
constexpr std::chrono::milliseconds timePerCharacter = 70ms;

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

PaneHints::PaneHints(Scheduler &scheduler, Surroundings surroundings, QWidget *pane)
    : PassThroughHostingView([this](QPainter &painter) { paintText(painter); }, pane)
    , m_scheduler(scheduler)
    , m_surroundings(std::move(surroundings))
    , m_opacity(0, {}, QEasingCurve::Linear, [this] { opacityChanged(); })
{
    hide();
}

void PaneHints::opacityChanged()
{
    update();
    if (opacity() <= 0) {
        hide();
        setContent({});
    }
    m_surroundings.changed();
}

void PaneHints::showStart(const QString &text)
{
    m_isPristine = true;
    showHint(text, false);
}

void PaneHints::showHint(const QString &text, bool temporary)
{
    m_timer.reset();
    m_isNote = false;
    QCoreApplication::instance()->removeEventFilter(this);
    setContent(text);
    setGeometry(parentWidget()->rect()); // its resize may be still to come
    m_picture = {};
    m_opacity.moveTo(1, false);
    show();
    if (!temporary)
        return;
    m_isPristine = false;
    fadeAfter(temporaryTime);
}

void PaneHints::fadeAfter(std::chrono::milliseconds time)
{
    m_timer = m_scheduler.after(time, [this] { fade(temporaryFade, QEasingCurve::OutSine); });
}

void PaneHints::showNote(const QString &text)
{
    showHint(text, true);
    m_isNote = true;
    QCoreApplication::instance()->installEventFilter(this);
    fadeAfter(std::max<std::chrono::milliseconds>(temporaryTime, timePerCharacter * text.size()));
}

void PaneHints::endNote()
{
    if (!std::exchange(m_isNote, false))
        return;
    QCoreApplication::instance()->removeEventFilter(this);
    m_timer.reset();
    fade(reducedFade, QEasingCurve::OutSine);
}

bool PaneHints::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) {
        const auto *widget = qobject_cast<const QWidget *>(watched);
        if (widget && widget->window() == window())
            endNote();
    }
    return PassThroughHostingView::eventFilter(watched, event);
}

void PaneHints::dismissPristineHint()
{
    if (std::exchange(m_isPristine, false))
        fade(startFade, QEasingCurve::InOutSine);
}

void PaneHints::fade(std::chrono::milliseconds duration, QEasingCurve::Type easing)
{
    if (opacity() <= 0)
        return;
    m_opacity.setDuration(int((m_reduceMotion ? reducedFade : duration).count()));
    m_opacity.setEasingCurve(easing);
    m_opacity.moveTo(0, true);
}

void PaneHints::paintText(QPainter &painter)
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
    if (hasGround()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(groundColor);
        painter.drawRoundedRect(shown.rect.marginsAdded(groundMargins), groundRadius, groundRadius);
    }
    painter.drawImage(place.topLeft(), m_picture);
}

PaneHints::Setting PaneHints::setting() const
{
    QFont smaller = font();
    smaller.setWeight(QFont::DemiBold);
    for (int pixels = fontPixels;; --pixels) {
        smaller.setPixelSize(pixels);
        Setting found = settingIn(smaller);
        if (pixels == leastFontPixels || found.rect.height() <= height() - 2 * roomForButtons)
            return found;
    }
}

PaneHints::Setting PaneHints::settingIn(const QFont &font) const
{
    const QFontMetrics metrics(font);
    const QRect room = rect().adjusted(sidePadding, verticalPadding, -sidePadding, -verticalPadding);
    const bool fitsOneLine = metrics.horizontalAdvance(text()) <= room.width();
    const QString shown = fitsOneLine ? text() : onTwoLines(text());
    const int width = balancedSize(metrics, room.size(), textFlags, shown).width(); // avoids a last line of one word
    const QRect narrow(room.x() + (room.width() - width) / 2, room.y(), width, room.height());
    const QRect centred = metrics.boundingRect(narrow, textFlags, shown);
    // In a low pane the middle isn't clear of the capsule.
    const int highest = capsuleBottom + (hasGround() ? groundMargins.top() : 0);
    const int down = std::max(0, std::min(highest - centred.top(), room.bottom() - centred.bottom()));
    return {shown, font, centred.translated(0, down)};
}

} // namespace lucentra
