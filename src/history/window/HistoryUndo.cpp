#include "HistoryUndo.h"

#include "HistoryManager.h"
#include "LocalizationManager.h"

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

HistoryUndo::HistoryUndo(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler)
    : m_manager(manager)
    , m_texts(texts)
    , m_scheduler(scheduler)
{
}

void HistoryUndo::deleteItem(const QUuid &id)
{
    if (const auto removed = m_manager.deleteItem(id))
        registerForUndo({*removed}, u"已刪除 1 筆紀錄"_s);
}

void HistoryUndo::clearUnstarred()
{
    registerForUndo(m_manager.clearUnstarred(), u"已清除未收藏的紀錄"_s);
}

void HistoryUndo::registerForUndo(const QList<HistoryItem> &items, const QString &message)
{
    if (items.isEmpty())
        return;
    m_pendingUndoItems.append(items);
    m_singleMessage = message;
    m_undoDismissTask = m_scheduler.after(5s, [this] { dismiss(); });
    Q_EMIT changed();
}

QString HistoryUndo::undoMessage() const
{
    if (!isPending())
        return {};
    return m_pendingUndoItems.size() == 1 ? m_texts.localized(m_singleMessage)
                                          : m_texts.formatted(u"已刪除 %d 筆紀錄"_s, int(m_pendingUndoItems.size()));
}

void HistoryUndo::undo()
{
    m_undoDismissTask.reset();
    m_manager.restore(std::exchange(m_pendingUndoItems, {}));
    Q_EMIT changed();
}

void HistoryUndo::dismiss()
{
    m_undoDismissTask.reset();
    m_pendingUndoItems.clear();
    Q_EMIT changed();
}

} // namespace lucentra
