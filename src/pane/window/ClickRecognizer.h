#pragma once

#include <QPointF>

#include <chrono>
#include <optional>

namespace lucentra {

/// Distinguishes clicks from drags on the pane's body, and counts clicks in quick succession.
///
/// Clicks count in pairs: four quick ones are two double clicks (1, 2, 1, 2). Positions are in screen points, so that
/// the pointer's travel is known even if the window follows it.
class ClickRecognizer
{
public:
    /// Travel of the pointer and of the window, in points, from which a press is a drag. The pointer's allows for an
    /// unsteady hand on a touchpad; a window doesn't move by itself.
    static constexpr double pointerTravel = 8.0;
    static constexpr double windowTravel = 2.0;

    /// The greatest time and distance (points) between the two presses of a pair.
    struct PairLimits
    {
        std::chrono::milliseconds interval;
        double distance;
    };

    void press(QPointF pointer, QPointF windowOrigin, std::chrono::milliseconds time, PairLimits limits);
    /// Returns the place of the press when it becomes a drag, and nullopt for all other moves.
    std::optional<QPointF> move(QPointF pointer);
    /// Returns the click's position in its pair (1 or 2), or nullopt if the press became a drag or was cancelled.
    std::optional<int> release(QPointF pointer, QPointF windowOrigin);
    /// Drops the press and the count.
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
