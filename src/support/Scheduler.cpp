#include "Scheduler.h"

#include <QTimer>

#include <utility>

namespace lucentra {

namespace {

class TimerTask : public ScheduledTask
{
public:
    TimerTask(std::chrono::milliseconds delay, std::function<void()> task)
    {
        m_timer->setSingleShot(true);
        m_timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), std::move(task));
        m_timer->start(delay);
    }

private:
    struct DeleteLater
    {
        void operator()(QTimer *timer) const
        {
            timer->stop();
            timer->deleteLater(); // a task may destroy its own handle
        }
    };

    std::unique_ptr<QTimer, DeleteLater> m_timer{new QTimer};
};

} // namespace

std::unique_ptr<ScheduledTask> EventLoopScheduler::after(std::chrono::milliseconds delay, std::function<void()> task)
{
    return std::make_unique<TimerTask>(delay, std::move(task));
}

} // namespace lucentra
