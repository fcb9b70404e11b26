#include "PaneHints.h"

#include "HintLabel.h"

#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr auto temporaryFade = 500ms;
constexpr auto startFade = 400ms;
constexpr auto reducedFade = 120ms;

} // namespace

PaneHints::PaneHints(QWidget &pane, Scheduler &scheduler, std::function<void(QWidget *)> add,
                     std::function<void()> changed)
    : m_pane(pane)
    , m_scheduler(scheduler)
    , m_add(std::move(add))
    , m_changed(std::move(changed))
{
}

void PaneHints::showStart(const QString &text)
{
    m_isPristine = true;
    show(text, false);
}

void PaneHints::show(const QString &text, bool temporary, std::chrono::milliseconds time)
{
    m_timer.reset();
    delete m_label;
    m_label = new HintLabel(text, &m_pane);
    m_label->onOpacityChanged = m_changed;
    layOut();
    m_add(m_label);
    if (!temporary)
        return;
    m_isPristine = false;
    m_timer = m_scheduler.after(time, [this] { fade(temporaryFade, QEasingCurve::OutSine); });
}

void PaneHints::dismissStart()
{
    if (std::exchange(m_isPristine, false))
        fade(startFade, QEasingCurve::InOutSine);
}

void PaneHints::layOut()
{
    if (m_label)
        m_label->setGeometry(m_pane.rect());
    m_changed();
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
