#include "PaneHints.h"

#include "HintLabel.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr auto temporaryTime = 1500ms;
constexpr auto temporaryFade = 500ms;
constexpr auto startFade = 400ms;
constexpr auto reducedFade = 120ms;

/// The time to read a character. An ideograph takes longer, but there are fewer of them.
constexpr std::chrono::milliseconds timePerCharacter = 70ms;

} // namespace

PaneHints::PaneHints(QWidget &pane, Scheduler &scheduler, Surroundings surroundings)
    : m_pane(pane)
    , m_scheduler(scheduler)
    , m_surroundings(std::move(surroundings))
{
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
    delete m_label;
    m_label = new HintLabel(text, &m_pane);
    m_label->onOpacityChanged = m_surroundings.changed;
    m_label->isOverText = m_surroundings.isOverText;
    layOut();
    m_surroundings.add(m_label);
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
        if (widget && widget->window() == m_pane.window())
            endNote();
    }
    return QObject::eventFilter(watched, event);
}

void PaneHints::dismissPristineHint()
{
    if (std::exchange(m_isPristine, false))
        fade(startFade, QEasingCurve::InOutSine);
}

void PaneHints::layOut()
{
    if (m_label)
        m_label->setGeometry(m_pane.rect());
    m_surroundings.changed();
}

void PaneHints::stackUnder(QWidget *capsule)
{
    if (m_label)
        m_label->stackUnder(capsule);
}

QRect PaneHints::textRect() const
{
    return m_label ? m_label->textRect() : QRect();
}

double PaneHints::opacity() const
{
    return m_label ? m_label->opacity() : 0;
}

void PaneHints::fade(std::chrono::milliseconds duration, QEasingCurve::Type easing)
{
    if (m_label)
        m_label->fadeOut(m_reduceMotion ? reducedFade : duration, easing);
}

} // namespace lucentra
