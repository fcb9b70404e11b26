#pragma once

#include "GlassAreaCapture.h"
#include "Scheduler.h"

#include <QImage>
#include <QThreadPool>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

class LocalizationManager;
class MainQueue;
class ScreenChangeMonitor;

/// Keeps a picture of what lies beneath the pane up to date while the pane is shown: renewed when something beneath
/// it changes or the pane has moved, at most ten times a second; without a change, no work. Main thread only.
class BackdropRenewal
{
public:
    /// The least time between two pictures: ten a second look alive behind frosted glass.
    static constexpr std::chrono::milliseconds interval{100};

    struct Pane
    {
        std::function<GlassArea()> area;                 ///< where the pane is; see `GlassArea`
        std::function<QRectF()> display;                 ///< the one with the pane's centre, in the space of `area`
        std::function<void(const QImage &)> showBeneath; ///< takes the picture; null where there is none
    };

    /// Pictures are taken on the worker.
    BackdropRenewal(Pane pane, ScreenCapture &capture, ScreenChangeMonitor &changes, const LocalizationManager &texts,
                    QThreadPool &worker, MainQueue &mainQueue, Scheduler &scheduler);
    ~BackdropRenewal();

    void start();
    void stop();
    /// The pane was moved or resized: another part of the screen lies beneath it.
    void paneMoved();

private:
    void renew();
    void rest();
    void watchArea();

    const Pane m_pane;
    ScreenCapture &m_capture;
    ScreenChangeMonitor &m_changes;
    const LocalizationManager &m_texts;
    QThreadPool &m_worker;
    MainQueue &m_mainQueue;
    Scheduler &m_scheduler;
    bool m_isRunning = false;
    bool m_isBusy = false;  ///< a picture is being taken, or the interval after it isn't over
    bool m_isStale = false; ///< another picture is due when that is over
    std::unique_ptr<ScheduledTask> m_rest;
    std::shared_ptr<BackdropRenewal *> m_self; ///< held weakly by pictures under way
};

} // namespace lucentra
