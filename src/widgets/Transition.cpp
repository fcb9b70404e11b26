#include "Transition.h"

#include "Spring.h"

#include <utility>

namespace lucentra {

Transition::Transition(double start, std::chrono::milliseconds duration, const QEasingCurve &curve,
                       std::function<void()> changed)
    : m_value(start)
    , m_changed(std::move(changed))
{
    setDuration(int(duration.count()));
    setEasingCurve(curve);
}

void Transition::moveTo(double target, bool isAnimated)
{
    if (isAnimated && state() == Running && endValue() == target)
        return;
    stop();
    if (isAnimated && m_value != target) {
        setStartValue(m_value);
        setEndValue(target);
        start();
    } else {
        m_value = target;
        m_changed();
    }
}

void Transition::updateCurrentValue(const QVariant &next)
{
    if (state() != Running || !isVisibleStep(m_value, next.toDouble(), endValue().toDouble()))
        return;
    m_value = next.toDouble();
    m_changed();
}

} // namespace lucentra
