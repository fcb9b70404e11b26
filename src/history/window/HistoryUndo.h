#pragma once

#include "HistoryItem.h"
#include "Scheduler.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace lucentra {

class HistoryManager;
class LocalizationManager;

/// Deletions that can be undone. A deletion takes effect at once; all of them can be undone together until five seconds
/// after the last one.
class HistoryUndo : public QObject
{
    Q_OBJECT

public:
    HistoryUndo(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler);

    void deleteItem(const QUuid &id);
    void clearUnstarred();
    /// Undoes the pending deletions.
    void undo();
    /// Makes the deletions final.
    void dismiss();

    bool isPending() const { return !m_pendingUndoItems.isEmpty(); }
    /// The message in the current interface language; empty if nothing is pending.
    QString undoMessage() const;

Q_SIGNALS:
    /// The message has changed or must be shown again.
    void changed();

private:
    void registerForUndo(const QList<HistoryItem> &items, const QString &message);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    QList<HistoryItem> m_pendingUndoItems;
    QString m_singleMessage; ///< text key of the message for a single entry
    std::unique_ptr<ScheduledTask> m_undoDismissTask;
};

} // namespace lucentra
