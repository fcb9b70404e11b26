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

/// How long callers wait for phrases that are being collected.
struct BuildPatience
{
    /// Counted from the start of the build, not per caller.
    std::chrono::milliseconds longest{2000};
    /// Whether phrases from before a change of the catalogues are good enough.
    bool acceptsOutdated = true;
};

/// Keeps the phrases of this computer's programs: opens the cache, and builds it anew in the background if the
/// catalogues have changed. While phrases are in use, it checks for changes at most once per minute. Any thread.
class PhraseStore
{
public:
    PhraseStore(CatalogueFolders folders, QString cachePath, BuildPatience patience);
    ~PhraseStore(); ///< cancels

    /// Starts to open or build the phrases, unless that has begun.
    void prepare();
    /// Ends a running build and all waiting, for good.
    void cancel();

    /// `lucentra/phrases` in the user's cache folder.
    static QString userCachePath();

    /// The phrases. Waits for them, but no longer than the patience allows; returns null if there are none by then.
    std::shared_ptr<const PhraseFile> file();

    /// Whether the phrases aren't there yet. Doesn't wait.
    bool isGettingReady();
    /// The same once it is known whether those of the cache are still right. Waits for that alone, not for a build.
    bool isCollecting();

private:
    bool isUsable() const;
    bool isAwaited() const;
    void setBuilding(bool isBuilding); ///< false ends the check, too
    void startCheckIfDue();
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
    bool m_isBuilding = false; ///< within a check
    QElapsedTimer m_sinceCheck;
    QThreadPool m_worker; ///< last member: its destructor waits for the check
};

} // namespace lucentra
