#pragma once

#include "FileStamp.h"
#include "HistoryItem.h"
#include "HistoryMerge.h"
#include "Result.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QThreadPool>

#include <functional>
#include <mutex>
#include <optional>

namespace lucentra {

/// Brings snapshots of the history to its file, one after the other on a thread of its own, together with what other
/// processes wrote there meanwhile. Snapshots that arrive while one is being written are merged: only the newest of
/// them is written next.
///
/// A file that can't be read, or only in part, is moved out of the way instead of being replaced.
class HistoryWriter
{
public:
    /// A list with the other processes' changes in it, and the changes of this process that aren't in it yet.
    struct Merged
    {
        QList<HistoryItem> items;
        HistoryChanges changes;
    };

    /// `diagnostics` gets one line for each failed write, and `onMerged` is called when other processes had changed the
    /// file; both on the writer's thread.
    HistoryWriter(QString path, std::function<void(const QString &)> diagnostics, std::function<void()> onMerged);
    /// Completes what is to be written.
    ~HistoryWriter();

    /// The changes are those since the last snapshot. What could not be written goes out with the next one.
    void write(QList<HistoryItem> snapshot, const HistoryChanges &changes);
    /// Whether something could not be written and nothing is being written now.
    bool hasFailed();
    /// What was written last, if other processes had changed the file by then and it wasn't taken yet.
    std::optional<Merged> takeMerged();
    /// Blocks until everything given so far is written or has failed.
    void finish();

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
    const std::function<void(const QString &)> m_diagnostics;
    const std::function<void()> m_onMerged;
    // What was written last, and how to tell that it is still there. On the writer's thread only.
    QList<HistoryItem> m_written;
    FileStamp m_stamp;
    std::mutex m_mutex; // guards the rest
    std::optional<QList<HistoryItem>> m_pending;
    QHash<QUuid, NumberedChange> m_unwritten;
    std::optional<QList<HistoryItem>> m_merged;
    quint64 m_number = 0; // of the newest snapshot
    bool m_isWriting = false;
    QThreadPool m_queue;
};

} // namespace lucentra
