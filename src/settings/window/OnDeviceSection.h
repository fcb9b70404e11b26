#pragma once

#include "FormSection.h"
#include "OnDeviceTranslationService.h"

#include <QThreadPool>

namespace lucentra {

/// What this machine can translate by itself. Looked up on a worker, each time it is asked for. Main thread only.
class OnDeviceSection : public FormSection
{
public:
    explicit OnDeviceSection(SettingsForm &form, QWidget *parent = nullptr);

    /// Asks what there is now.
    void refresh();

private:
    void showStatus();

    QLabel *m_status;
    QList<OnDeviceServiceStatus> m_services;
    bool m_isKnown = false;
    QThreadPool m_worker; ///< last: its destruction waits for what still runs
};

} // namespace lucentra
