#pragma once

#include <QPointF>

#include <chrono>
#include <optional>

namespace lucentra {

/// Tells clicks from drags on the pane's body, and counts clicks that follow each other quickly.
///
/// Clicks count in pairs: four quick ones are two double clicks (1, 2, 1, 2). Positions are points on the screen, so
/// that a window which follows the pointer doesn't hide the pointer's travel.
class ClickRecognizer
{
public:
    /// From here on a press is a drag: the pointer's travel, and the window's, in points. The pointer's is the
    /// toolkit-independent size of a hand's unrest on a touchpad; a window doesn't move by itself at all.
    static constexpr double pointerTravel = 8.0;
    static constexpr double windowTravel = 2.0;

    /// Within which time and distance (points) of the press before a press counts as the second of a pair.
    struct PairLimits
    {
        std::chrono::milliseconds interval;
        double distance;
    };

    void press(QPointF pointer, QPointF windowOrigin, std::chrono::milliseconds time, PairLimits limits);
    /// The place of the press, once a press: from this move on it is a drag.
    std::optional<QPointF> move(QPointF pointer);
    /// The click's place in its pair (1 or 2), or nothing where the press was a drag or is no longer followed.
    std::optional<int> release(QPointF pointer, QPointF windowOrigin);
    /// Follows the press no longer, and starts counting anew.
    void cancel();

private:
    struct Press
    {
        QPointF pointer;
        QPointF windowOrigin;
        std::chrono::milliseconds time{0};
        int count = 1;
    };

    std::optional<Press> m_current;
    std::optional<Press> m_previous; ///< the last press that was a click
};

} // namespace lucentra
