#include "Spring.h"

#include <cmath>
#include <numbers>

namespace lucentra {

namespace {

/// Radians of the undamped oscillation after which 1 % of the way is left.
constexpr double restsAfter = 6.64;

constexpr double visibleChange = 0.03;

double covered(double radians)
{
    return 1 - (1 + radians) * std::exp(-radians);
}

qreal springAt(qreal progress)
{
    return progress >= 1 ? 1 : covered(progress * restsAfter) / covered(restsAfter);
}

} // namespace

QEasingCurve springCurve()
{
    QEasingCurve curve;
    curve.setCustomType(springAt);
    return curve;
}

std::chrono::milliseconds springTime(std::chrono::milliseconds response)
{
    return std::chrono::milliseconds(std::lround(double(response.count()) * restsAfter / (2 * std::numbers::pi)));
}

bool isVisibleStep(double shown, double next, double last)
{
    return next == last || std::abs(next - shown) >= visibleChange;
}

} // namespace lucentra
