#pragma once

#include "HistoryItem.h"
#include "HistorySearch.h"

#include "Scheduler.h"

#include <QAbstractListModel>
#include <QHash>
#include <QSet>

#include <memory>

namespace lucentra {

class HistoryManager;
class LocalizationManager;

/// The entries of the store that match the search, in the store's order. It follows the store's changes entry by entry,
/// so that a view keeps its position and its current row. A search through many entries returns to the event loop after
/// every few milliseconds, and adds its matches as it finds them.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    HistoryListModel(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler);

    const HistorySearch &search() const { return m_search; }
    /// When it returns, the model contains the first matches unless they are far down.
    void setSearchText(const QString &text);
    /// Whether the search is incomplete.
    bool isSearching() const { return m_nextLook != nullptr; }
    /// Completes the search now.
    void completeSearch();

    const QList<HistoryItem> &items() const { return m_items; }
    const HistoryItem &item(int row) const { return m_items[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The texts of a row for screen readers; the delegate paints the entry itself.
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    /// The search is complete.
    void searchCompleted();

private:
    bool matches(const HistoryItem &item);
    QList<HistoryItem> lookFurther();
    void goOn();
    void lookLater();
    QList<HistoryItem> matchingItems();
    void follow();
    void changeRows(const QList<HistoryItem> &wanted, const QSet<QUuid> &ids);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    HistorySearch m_search;
    QList<HistoryItem> m_items;
    qsizetype m_lookedAt = 0; ///< number of searched entries of the store, starting with the newest
    std::unique_ptr<ScheduledTask> m_nextLook;
    QHash<QUuid, QString> m_folded; ///< of entries searched before
};

} // namespace lucentra
