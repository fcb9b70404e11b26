#pragma once

#include "FormSection.h"
#include "OnDeviceTranslationService.h"
#include "Scheduler.h"

#include <QThreadPool>

#include <memory>

namespace lucentra {

/// What this computer can translate by itself. Each update looks it up on a worker.
class OnDeviceSection : public FormSection
{
public:
    explicit OnDeviceSection(SettingsForm &form);

    /// Starts an update.
    void refresh();

private:
    void take(const QList<OnDeviceServiceStatus> &services);
    void showStatus();

    QLabel *m_status;
    QList<OnDeviceServiceStatus> m_services;
    bool m_isKnown = false;
    std::unique_ptr<ScheduledTask> m_nextLook; ///< while there is nothing yet
    QThreadPool m_worker;                      ///< last: its destructor waits for running tasks
};

} // namespace lucentra
