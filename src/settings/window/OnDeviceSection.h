#pragma once

#include "FormSection.h"
#include "OnDeviceTranslationService.h"
#include "Scheduler.h"

#include <QThreadPool>

#include <memory>

namespace lucentra {

/// What this machine can translate by itself. Looked up on a worker, each time it is asked for.
class OnDeviceSection : public FormSection
{
public:
    explicit OnDeviceSection(SettingsForm &form, QWidget *parent = nullptr);

    /// Asks what there is now.
    void refresh();

private:
    void take(const QList<OnDeviceServiceStatus> &services);
    void showStatus();

    QLabel *m_status;
    QList<OnDeviceServiceStatus> m_services;
    bool m_isKnown = false;
    std::unique_ptr<ScheduledTask> m_nextLook; ///< while there is nothing yet
    QThreadPool m_worker;                      ///< last: its destruction waits for what still runs
};

} // namespace lucentra
