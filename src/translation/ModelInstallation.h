#pragma once

#include "Callback.h"
#include "TranslationModels.h"

#include <QPointer>
#include <QThreadPool>

#include <atomic>

namespace lucentra {

class LocalizationManager;
class MainQueue;

/// How far an installation is.
struct ModelProgress
{
    QList<LanguagePair> models; ///< which are downloaded; empty while the list is fetched
    qint64 bytes = 0;           ///< that have arrived
    qint64 total = 0;           ///< of all these models
};

/// Installs the models that translate a pair, one after another: fetches the list, and downloads what is missing or
/// older. Returns the installed models; an empty list if everything is there already. Blocks; any thread.
ModelResult<QList<LanguagePair>> installModels(TranslationModels &models, const LanguagePair &wanted,
                                               const std::function<void(const ModelProgress &)> &progress,
                                               const std::function<bool()> &isWanted);

/// The sentence for the user in the interface language.
QString modelProblemText(const ModelProblem &problem, const LocalizationManager &texts);
/// "English → 日本語".
QString modelTitle(const LanguagePair &pair);
/// One sentence on which models are installed.
QString installedModelsText(TranslationModels &models, const LocalizationManager &texts);
/// A size in megabytes: "36 MB".
QString megabyteText(qint64 bytes);

/// The installation that the settings window has started. It goes on after the window is closed. Main thread.
class ModelInstallation
{
public:
    ModelInstallation(TranslationModels &models, MainQueue &mainQueue);
    ~ModelInstallation(); ///< cancels, and waits for the end

    bool isRunning() const { return m_isRunning; }
    /// Of the running installation.
    const ModelProgress &progress() const { return m_progress; }
    /// Why the last installation failed. Nullopt if it is running, was cancelled or has succeeded.
    const std::optional<ModelProblem> &problem() const { return m_problem; }

    /// Does nothing while one is running.
    void start(const LanguagePair &wanted);
    void cancel();

    /// Called after each change.
    Callback<> onChanged;

private:
    void finish(const ModelResult<QList<LanguagePair>> &installed);

    TranslationModels &m_models;
    MainQueue &m_mainQueue;
    bool m_isRunning = false;
    ModelProgress m_progress;
    std::optional<ModelProblem> m_problem;
    QObject m_alive;                     ///< context of what is posted
    std::atomic<bool> m_isWanted = true; ///< false once the running installation is cancelled
    QThreadPool m_worker;                ///< last: its destruction waits for the installation
};

} // namespace lucentra
