#pragma once

#include "Callback.h"
#include "FormSection.h"
#include "TranslationModels.h"

#include <QThreadPool>

class QProgressBar;
class QPushButton;

namespace lucentra {

/// The translation models on this computer, and the download of those that the target language needs. The folders are
/// read on a worker.
class ModelsSection : public FormSection
{
public:
    explicit ModelsSection(SettingsForm &form);
    ~ModelsSection() override;

    /// Reads the models again.
    void refresh();
    void focusDownload();
    /// Called after models were installed or removed.
    Callback<> onModelsChanged;

private:
    void addOfferRows();
    void fillSources();
    void showOffer();
    void showInstallation();
    void showStored();
    void removeModel(const LanguagePair &pair);
    void take(const QList<StoredModel> &stored);
    LanguagePair wanted() const;

    ModelInstallation &m_installation;
    QComboBox *m_source;
    QPushButton *m_download;
    QLabel *m_needs;       ///< which models a translation by way of another language needs
    QLabel *m_isInstalled; ///< shown in place of the button
    QProgressBar *m_bar;
    QPushButton *m_cancel;
    QLabel *m_progress;
    QLabel *m_failure;
    QWidget *m_list;
    QList<StoredModel> m_stored;
    bool m_wasRunning = false;
    std::optional<ModelProblem> m_problem; ///< of the last removal
    QThreadPool m_worker;                  ///< last: its destructor waits for running tasks
};

} // namespace lucentra
