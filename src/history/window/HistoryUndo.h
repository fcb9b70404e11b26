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

/// Deletions that can still be taken back: at once they take effect, and for five seconds after the last one all of
/// them together can be undone. Main thread only.
class HistoryUndo : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object.
    HistoryUndo(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler,
                QObject *parent = nullptr);

    void deleteItem(const QUuid &id);
    void clearUnstarred();
    /// Puts back what is pending.
    void undo();
    /// Makes the deletions final.
    void dismiss();

    bool isPending() const { return !m_pendingUndoItems.isEmpty(); }
    /// What was deleted, in the interface language of this moment; empty where nothing is pending.
    QString undoMessage() const;

Q_SIGNALS:
    /// The message is another one now, or is shown anew.
    void changed();

private:
    void registerForUndo(const QList<HistoryItem> &items, const QString &message);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    QList<HistoryItem> m_pendingUndoItems;
    QString m_singleMessage; ///< key of the message where one entry is pending
    std::unique_ptr<ScheduledTask> m_undoDismissTask;
};

} // namespace lucentra
