#pragma once

#include "CatalogueFolders.h"
#include "PhraseFile.h"

#include <QElapsedTimer>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace lucentra {

/// How long the memory is waited for while it is being built, from the moment the build was begun: however many ask,
/// all together wait no longer.
struct BuildPatience
{
    std::chrono::milliseconds longest{2000};
    /// Whether a memory will do that was made before the catalogues changed.
    bool acceptsOutdated = true;
};

/// Keeps the memory of phrases: opens its cache, builds it anew in the background where the catalogues have changed,
/// and looks every minute in which it is used whether they have. Any thread.
class PhraseStore
{
public:
    /// Starts at once, on a thread of its own.
    PhraseStore(CatalogueFolders folders, QString cachePath, BuildPatience patience);
    /// Gives up as `cancel` does.
    ~PhraseStore();

    /// Gives up a build under way; nobody waits any longer.
    void cancel();

    /// `lucentra/phrases` in the user's cache folder.
    static QString userCachePath();

    /// The memory; nothing where there is none in time. Waits as its patience says.
    std::shared_ptr<const PhraseFile> file();

    /// Whether there is no memory yet, but there will be. Waits for nothing.
    bool isGettingReady();

private:
    void startCheck();
    void check();
    std::shared_ptr<const PhraseFile> build(const CatalogueSurvey &survey) const;
    void publish(std::shared_ptr<const PhraseFile> file);

    const CatalogueFolders m_folders;
    const QString m_cachePath;
    const BuildPatience m_patience;
    std::atomic<bool> m_isCancelled = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::shared_ptr<const PhraseFile> m_file; // these are guarded by m_mutex
    bool m_isChecking = false;
    QElapsedTimer m_sinceCheck;
    QThreadPool m_worker; ///< last: its destruction waits for the check
};

} // namespace lucentra
