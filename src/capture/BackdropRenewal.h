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

/// Keeps a picture of the screen beneath the pane up to date while the pane is shown. It is renewed when something
/// beneath changes or the pane moves, at most ten times per second; without a change there is no work.
class BackdropRenewal
{
public:
    /// The minimum time between two pictures. Ten per second look alive behind frosted glass.
    static constexpr std::chrono::milliseconds interval{100};

    struct Pane
    {
        std::function<GlassArea()> area;                 ///< the place of the pane
        std::function<QRectF()> display;                 ///< the display with the pane's centre, global points
        std::function<void(const QImage &)> showBeneath; ///< receives the picture; null if there is none
    };

    /// Pictures are taken on the worker.
    BackdropRenewal(Pane pane, ScreenCapture &capture, ScreenChangeMonitor &changes, const LocalizationManager &texts,
                    QThreadPool &worker, MainQueue &mainQueue, Scheduler &scheduler);
    ~BackdropRenewal();

    void start();
    void stop();
    /// To be called after the pane was moved or resized.
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
    bool m_isStale = false; ///< another picture is needed after that
    std::unique_ptr<ScheduledTask> m_rest;
    std::shared_ptr<BackdropRenewal *> m_self; ///< held weakly by pictures under way
};

} // namespace lucentra
