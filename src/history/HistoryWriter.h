#pragma once

#include "Callback.h"
#include "FileStamp.h"
#include "HistoryItem.h"
#include "HistoryMerge.h"
#include "RequestedTask.h"
#include "Result.h"

#include <QHash>
#include <QList>
#include <QString>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

namespace lucentra {

/// Writes snapshots of the history to its file on a separate thread, merged with what other processes wrote meanwhile.
/// If several snapshots arrive while one is being written, only the newest is written.
///
/// A file that can't be read, or only in part, is renamed instead of being replaced.
class HistoryWriter
{
public:
    /// A list that includes other processes' changes, and the changes of this process that it doesn't include yet.
    struct Merged
    {
        QList<HistoryItem> items;
        HistoryChanges changes;
    };

    /// `diagnostics` is called for each failed write, and `onMerged` after merging other processes' changes; both on
    /// the writer's thread.
    HistoryWriter(QString path, DiagnosticLine diagnostics, std::function<void()> onMerged);
    /// Waits for pending writes.
    ~HistoryWriter();

    /// Writes a snapshot; `changes` are those since the last one. If writing fails, they are kept for the next one.
    void write(QList<HistoryItem> snapshot, const HistoryChanges &changes);
    /// Whether there are changes that aren't in the file yet.
    bool hasUnwritten();
    /// The list that was written last, if it includes other processes' changes and wasn't taken yet.
    std::optional<Merged> takeMerged();
    /// Blocks until all snapshots so far are written or have failed. `isUrgent`: a process that keeps the file locked
    /// is then waited for half a second at most, and the file is written all the same.
    void finish(bool isUrgent = false);

private:
    struct NumberedChange
    {
        quint64 number; ///< of the snapshot
        HistoryChange change;
    };
    struct Pending
    {
        QList<HistoryItem> snapshot;
        HistoryChanges changes;
        quint64 number;
    };

    std::optional<Pending> takePending();
    HistoryChanges unwrittenChanges() const;
    void writePending();
    Result<QList<HistoryItem>> writeMerged(const Pending &pending);
    Result<QList<HistoryItem>> merged(const Pending &pending);
    void takeNoteOf(const Pending &written, const QList<HistoryItem> &items);

    const QString m_path;
    const DiagnosticLine m_diagnostics;
    const std::function<void()> m_onMerged;
    // The list that was written last, and the file's stamp after that. On the writer's thread only.
    QList<HistoryItem> m_written;
    FileStamp m_stamp;
    bool m_hasWarnedOfLock = false;
    std::atomic<bool> m_isUrgent = false;
    std::mutex m_mutex; // guards what follows
    std::optional<QList<HistoryItem>> m_pending;
    QHash<QUuid, NumberedChange> m_unwritten;
    std::optional<QList<HistoryItem>> m_merged;
    quint64 m_number = 0; // of the newest snapshot
    RequestedTask m_writer{[this] { writePending(); }, QStringLiteral("com.tarnby.lucentra.historyPersistence")};
};

} // namespace lucentra
