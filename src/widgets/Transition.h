#pragma once

#include <QVariantAnimation>

#include <chrono>
#include <functional>

namespace lucentra {

/// A number that goes to its targets by a short animation.
class Transition : public QVariantAnimation
{
public:
    /// `changed` is called after each step; see `isVisibleStep`.
    Transition(double start, std::chrono::milliseconds duration, const QEasingCurve &curve,
               std::function<void()> changed);
    double value() const { return m_value; }
    /// Goes to a number, at once if it isn't animated. Does nothing if it is on its way there.
    void moveTo(double target, bool isAnimated);

protected:
    void updateCurrentValue(const QVariant &next) override;

private:
    double m_value;
    const std::function<void()> m_changed;
};

} // namespace lucentra
