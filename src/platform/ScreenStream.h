#pragma once

#include "ScreenRect.h"

#include <QImage>
#include <QRect>

#include <chrono>
#include <functional>

namespace lucentra {

/// A picture of an area of the screen.
struct ScreenFrame
{
    QImage picture; ///< transparent where no display shows the area; null if there is no picture
    QRect damage;   ///< contains all that has changed since the previous frame, in pixels of the picture
};

/// Follows what other programs show in an area of the screen. This program's own windows are never part of it.
class ScreenStream
{
public:
    /// The minimum time between two frames, unless it is set.
    static constexpr std::chrono::milliseconds interval{100};

    virtual ~ScreenStream() = default;

    /// Follows an area in place of the previous one; an empty area ends it. `frame` is called now and
    /// after each change, at most once per interval. Without a change there is no work.
    virtual void follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame) = 0;

    /// Whether a frame follows every change, without a visible sign of it.
    virtual bool isContinuous() const { return false; }
    /// Sets the minimum time between two frames of a continuous stream.
    virtual void setInterval(std::chrono::milliseconds) {}
};

} // namespace lucentra
