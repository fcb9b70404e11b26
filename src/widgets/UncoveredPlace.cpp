#include "UncoveredPlace.h"

#include <algorithm>
#include <array>

namespace lucentra {

QPoint uncoveredPlace(const QSize &size, const QRect &screen, const QRect &pane)
{
    constexpr int gap = 16;
    constexpr int titleBar = 36; // added by the window manager
    QRect middle(QPoint(), size);
    middle.moveCenter(screen.center());
    const auto within = [&](int x, int y) {
        return QRect(
            QPoint(std::clamp(x, screen.left(), std::max(screen.left(), screen.right() - size.width())),
                   std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() - size.height() - titleBar))),
            size);
    };
    const std::array places{
        middle, within(pane.right() + gap, middle.y()), within(pane.left() - gap - size.width(), middle.y()),
        within(middle.x(), pane.bottom() + gap), within(middle.x(), pane.top() - gap - titleBar - size.height())};
    const auto covered = [&](const QRect &place) {
        const QSize common = place.intersected(pane).size();
        return qint64(common.width()) * common.height();
    };
    return std::min_element(places.begin(), places.end(),
                            [&](const QRect &one, const QRect &other) { return covered(one) < covered(other); })
        ->topLeft();
}

} // namespace lucentra
