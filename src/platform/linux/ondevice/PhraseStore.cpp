#include "PhraseStore.h"

#include "Memory.h"
#include "PhraseCollector.h"
#include "PrivateFile.h"

#include <QBuffer>
#include <QSaveFile>
#include <QStandardPaths>

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::milliseconds checkInterval = 60s;
/// How long callers who don't want to wait for a build wait to know whether there is one.
constexpr std::chrono::milliseconds longestLook = 2s;
constexpr int lowPriority = 10;

} // namespace

PhraseStore::PhraseStore(CatalogueFolders folders, QString cachePath, BuildPatience patience)
    : m_folders(std::move(folders))
    , m_cachePath(std::move(cachePath))
    , m_patience(patience)
{
    m_worker.setMaxThreadCount(1);
}

PhraseStore::~PhraseStore()
{
    cancel();
}

void PhraseStore::prepare()
{
    const std::lock_guard lock(m_mutex);
    if (!m_sinceCheck.isValid())
        startCheckIfDue();
}

void PhraseStore::cancel()
{
    const std::lock_guard lock(m_mutex);
    m_isCancelled = true;
    m_changed.notify_all();
}

QString PhraseStore::userCachePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/lucentra/phrases"_s;
}

void PhraseStore::startCheckIfDue()
{
    if (m_isChecking || (m_sinceCheck.isValid() && !m_sinceCheck.hasExpired(checkInterval.count())))
        return;
    m_isChecking = true;
    m_sinceCheck.start();
    m_worker.start([this] { check(); });
}

/// Whether there are phrases that callers accept.
bool PhraseStore::isUsable() const
{
    return m_file && (m_patience.acceptsOutdated || !m_isChecking);
}

bool PhraseStore::isAwaited() const
{
    return !m_isCancelled && !isUsable() && (m_isChecking || !m_sinceCheck.isValid());
}

std::shared_ptr<const PhraseFile> PhraseStore::file()
{
    std::unique_lock lock(m_mutex);
    startCheckIfDue();
    const auto patience = m_patience.longest - std::chrono::milliseconds(m_sinceCheck.elapsed());
    m_changed.wait_for(lock, std::max(patience, 0ms), [this] { return !isAwaited(); });
    return m_file;
}

bool PhraseStore::isGettingReady()
{
    const std::lock_guard lock(m_mutex);
    return isAwaited();
}

bool PhraseStore::isCollecting()
{
    std::unique_lock lock(m_mutex);
    startCheckIfDue();
    const auto patience = longestLook - std::chrono::milliseconds(m_sinceCheck.elapsed());
    m_changed.wait_for(lock, std::max(patience, 0ms), [this] { return m_isBuilding || !isAwaited(); });
    return isAwaited();
}

void PhraseStore::setBuilding(bool isBuilding)
{
    const std::lock_guard lock(m_mutex);
    m_isBuilding = isBuilding;
    m_isChecking = isBuilding;
    m_changed.notify_all();
}

void PhraseStore::publish(std::shared_ptr<const PhraseFile> file)
{
    const std::lock_guard lock(m_mutex);
    m_file = std::move(file);
    m_changed.notify_all();
}

void PhraseStore::check()
{
    auto current = [this] {
        const std::lock_guard lock(m_mutex);
        return m_file;
    }();
    if (!current) {
        current = PhraseFile::open(m_cachePath);
        if (current)
            publish(current);
        else
            setBuilding(true); // at once: on a cold disk, the survey takes its time
    }
    // Lowers the priority of this thread, so that a renewal doesn't disturb the user's work. The first build, and one
    // that a command waits for, keep theirs: on a busy computer they might never end.
    if (m_patience.acceptsOutdated && current)
        ::setpriority(PRIO_PROCESS, id_t(::syscall(SYS_gettid)), lowPriority);
    const CatalogueSurvey survey = surveyCatalogues(m_folders);
    if (!current || current->header().fingerprint != survey.fingerprint) {
        setBuilding(true);
        if (auto built = build(survey))
            publish(std::move(built));
        giveBackFreeMemory();
    }
    setBuilding(false);
}

std::shared_ptr<const PhraseFile> PhraseStore::build(const CatalogueSurvey &survey) const
{
    createFolderOf(m_cachePath);
    QSaveFile cache(m_cachePath);
    // Readable by the owner only: the phrases show which programs are installed.
    if (cache.open(QIODevice::WriteOnly) && cache.setPermissions(QFile::ReadOwner | QFile::WriteOwner)) {
        if (!buildPhraseFile(survey, cache, m_isCancelled))
            cache.cancelWriting();
        // Flushed first: on a full disk, committing alone doesn't notice that the last part is missing.
        if (cache.flush()) {
            giveToOwnerOfFolder(cache);
            if (cache.commit())
                return PhraseFile::open(m_cachePath);
        }
        if (m_isCancelled)
            return nullptr;
    }
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    return buildPhraseFile(survey, bytes, m_isCancelled) ? PhraseFile::fromBytes(bytes.data()) : nullptr;
}

} // namespace lucentra
