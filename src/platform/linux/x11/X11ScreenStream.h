#pragma once

#include "ScreenStream.h"
#include "Scheduler.h"

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>

namespace lucentra {

class MainQueue;

/// Takes a new picture whenever something beneath the area changes.
class X11ScreenStream : public ScreenStream
{
public:
    /// Areas are global points.
    struct Source
    {
        /// Watches an area in place of the previous one; an empty area ends it. `changed`, with the changed part in
        /// pixels of the area, is called once until `rearm`.
        std::function<void(const ScreenRect &area, std::function<void(const QRect &)> changed)> watch;
        std::function<void()> rearm;
        /// The display with a point; empty if there is none.
        std::function<QRectF(const QPointF &)> displayAt;
        /// Blocks; called on a worker.
        std::function<QImage(const ScreenRect &area)> capture;
    };

    X11ScreenStream(Source source, MainQueue &mainQueue, Scheduler &scheduler);

    void follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame) override;
    bool isContinuous() const override { return true; }
    void setInterval(std::chrono::milliseconds time) override { m_interval = time; }

private:
    void renew();
    void rest();

    const Source m_source;
    MainQueue &m_mainQueue;
    Scheduler &m_scheduler;
    std::chrono::milliseconds m_interval = interval;
    ScreenRect m_area;
    std::function<void(const ScreenFrame &)> m_frame;
    QRect m_damage;         ///< since the last picture
    bool m_isBusy = false;  ///< a picture is being taken, or the interval after it isn't over
    bool m_isStale = false; ///< another picture is needed after that
    std::unique_ptr<ScheduledTask> m_rest;
    QImage m_latest;      ///< the last picture taken; used on the worker only
    QObject m_alive;      ///< context of what is posted
    QThreadPool m_worker; ///< last member: its destructor waits for a running capture
};

} // namespace lucentra
