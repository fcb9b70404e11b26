#include "UncoveredPlace.h"

#include <algorithm>
#include <array>

namespace lucentra {

namespace {

constexpr int paneGap = 16;

}

QPoint uncoveredPlace(const QSize &size, const QRect &screen, const QRect &pane)
{
    constexpr int titleBar = 36; // added by the window manager
    QRect middle(QPoint(), size);
    middle.moveCenter(screen.center());
    const auto kept = [](int place, int first, int last) {
        const int margin = std::clamp((last - first) / 2, 0, paneGap);
        return std::clamp(place, first + margin, std::max(first + margin, last - margin));
    };
    const auto within = [&](int x, int y) {
        return QRect(QPoint(kept(x, screen.left(), screen.right() - size.width()),
                            kept(y, screen.top(), screen.bottom() - size.height() - titleBar)),
                     size);
    };
    const std::array places{
        middle, within(pane.right() + paneGap, middle.y()), within(pane.left() - paneGap - size.width(), middle.y()),
        within(middle.x(), pane.bottom() + paneGap), within(middle.x(), pane.top() - paneGap - titleBar - size.height())};
    const auto covered = [&](const QRect &place) {
        const QSize common = place.intersected(pane).size();
        return qint64(common.width()) * common.height();
    };
    return std::min_element(places.begin(), places.end(),
                            [&](const QRect &one, const QRect &other) { return covered(one) < covered(other); })
        ->topLeft();
}

} // namespace lucentra
