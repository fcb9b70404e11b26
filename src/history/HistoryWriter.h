#pragma once

#include "HistoryItem.h"

#include <QList>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

namespace lucentra {

/// Writes snapshots of the history to its file, one after the other on a thread of its own. Snapshots that arrive
/// while one is being written are merged: only the newest of them is written next.
class HistoryWriter
{
public:
    /// `diagnostics` gets one line for each failed write, on the writer's thread.
    HistoryWriter(QString path, std::function<void(const QString &)> diagnostics);
    /// Completes what is to be written.
    ~HistoryWriter();

    /// Before the next write, the file that is there is moved out of the way instead of being replaced. While that
    /// fails nothing is written.
    void preserveUnreadableFile();
    void write(QList<HistoryItem> snapshot);
    /// Blocks until everything given so far is written or has failed.
    void finish();

private:
    std::optional<QList<HistoryItem>> takePending();
    void writePending();
    void writeSnapshot(const QList<HistoryItem> &snapshot);

    const QString m_path;
    const std::function<void(const QString &)> m_diagnostics;
    std::mutex m_mutex;
    std::optional<QList<HistoryItem>> m_pending; // guarded by m_mutex
    bool m_isWriting = false;                    // guarded by m_mutex
    std::atomic<bool> m_preservesUnreadableFile = false;
    QThreadPool m_queue;
};

} // namespace lucentra
