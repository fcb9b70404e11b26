#pragma once

#include <QEasingCurve>

#include <chrono>

namespace lucentra {

/// A critically damped spring (it doesn't overshoot) as the curve of an animation, which must take `springTime`.
QEasingCurve springCurve();

/// How long a spring of the given response (the period that it would have without damping) takes to come to rest.
std::chrono::milliseconds springTime(std::chrono::milliseconds response);

/// Whether a step of a fade is worth a frame. Smaller changes of opacity are hardly visible, and the long end of a
/// spring consists of them. True for the last step.
bool isVisibleStep(double shown, double next, double last);

} // namespace lucentra
