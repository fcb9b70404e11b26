#include "HistoryWriter.h"

#include "FileLock.h"
#include "HistoryFile.h"
#include "PrivateFile.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// A write takes milliseconds; a process that holds the lock for longer than this hangs.
constexpr auto lockTimeout = 2s;

} // namespace

HistoryWriter::HistoryWriter(QString path, DiagnosticLine diagnostics, std::function<void()> onMerged)
    : m_path(std::move(path))
    , m_diagnostics(std::move(diagnostics))
    , m_onMerged(std::move(onMerged))
{
}

HistoryWriter::~HistoryWriter()
{
    finish();
}

void HistoryWriter::write(QList<HistoryItem> snapshot, const HistoryChanges &changes)
{
    const std::lock_guard lock(m_mutex);
    ++m_number;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        // An entry that was never in the file is still new after further changes.
        const auto before = m_unwritten.constFind(change.key());
        const bool isNew = before != m_unwritten.cend() && before->change == HistoryChange::Added;
        m_unwritten.insert(change.key(), {m_number, isNew ? HistoryChange::Added : change.value()});
    }
    m_pending = std::move(snapshot);
    m_writer.request();
}

bool HistoryWriter::hasUnwritten()
{
    const std::lock_guard lock(m_mutex);
    return !m_unwritten.isEmpty();
}

std::optional<HistoryWriter::Merged> HistoryWriter::takeMerged()
{
    const std::lock_guard lock(m_mutex);
    auto merged = std::exchange(m_merged, std::nullopt);
    if (!merged)
        return std::nullopt;
    return Merged{.items = std::move(*merged), .changes = unwrittenChanges()};
}

void HistoryWriter::finish(bool isUrgent)
{
    if (isUrgent)
        m_isUrgent = true;
    m_writer.wait();
}

HistoryChanges HistoryWriter::unwrittenChanges() const
{
    HistoryChanges changes;
    for (auto unwritten = m_unwritten.begin(); unwritten != m_unwritten.end(); ++unwritten)
        changes.insert(unwritten.key(), unwritten->change);
    return changes;
}

std::optional<HistoryWriter::Pending> HistoryWriter::takePending()
{
    const std::lock_guard lock(m_mutex);
    auto snapshot = std::exchange(m_pending, std::nullopt);
    if (!snapshot)
        return std::nullopt;
    return Pending{.snapshot = std::move(*snapshot), .changes = unwrittenChanges(), .number = m_number};
}

void HistoryWriter::writePending()
{
    const auto pending = takePending();
    if (!pending)
        return;
    const auto written = writeMerged(*pending);
    if (written)
        takeNoteOf(*pending, *written);
    else
        m_diagnostics(u"Failed to save history: "_s + written.error().description);
}

/// Returns the new content of the file.
Result<QList<HistoryItem>> HistoryWriter::writeMerged(const Pending &pending)
{
    createFolderOf(m_path);
    const FileLock lock(m_path, lockTimeout, &m_isUrgent);
    if (!lock.mayWrite())
        return tl::unexpected(
            Failure{.domain = u"History"_s, .code = 0, .description = u"the file cannot be locked"_s});
    if (!lock.isHeld() && !std::exchange(m_hasWarnedOfLock, true))
        m_diagnostics(
            u"The history is written without a lock; what other programs write at the same time may be lost"_s);
    auto items = merged(pending);
    if (!items)
        return items;
    const auto written = writeHistoryFile(m_path, *items);
    if (!written)
        return tl::unexpected(written.error());
    m_written = *items;
    m_stamp = stampOf(m_path);
    return items;
}

Result<QList<HistoryItem>> HistoryWriter::merged(const Pending &pending)
{
    const FileStamp stamp = stampOf(m_path);
    if (stamp == FileStamp()) // the file was deleted, so there is nothing to merge
        return pending.snapshot;
    QList<HistoryItem> inFile = m_written;
    if (stamp != m_stamp) {
        auto content = readHistoryFile(m_path);
        if (!content || !content->isWhole) {
            const auto kept = keepAside(m_path);
            if (!kept)
                return tl::unexpected(kept.error());
            return pending.snapshot;
        }
        inFile = std::move(content->items);
    }
    QList<HistoryItem> items = mergedHistory(pending.snapshot, pending.changes, inFile);
    trimHistory(items);
    return items;
}

void HistoryWriter::takeNoteOf(const Pending &written, const QList<HistoryItem> &items)
{
    const std::lock_guard lock(m_mutex);
    m_unwritten.removeIf([&](const std::pair<const QUuid &, NumberedChange &> &change) {
        return change.second.number <= written.number;
    });
    const bool isMerged = items != written.snapshot;
    m_merged = isMerged ? std::optional(items) : std::nullopt;
    if (isMerged)
        m_onMerged();
}

} // namespace lucentra
