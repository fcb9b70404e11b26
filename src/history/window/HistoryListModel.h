#pragma once

#include "HistoryItem.h"
#include "HistorySearch.h"

#include "Scheduler.h"

#include <QAbstractListModel>
#include <QHash>

#include <memory>

namespace lucentra {

class HistoryManager;
class LocalizationManager;

/// The entries of the store that match the search, in the store's order. It follows the store's changes entry by
/// entry, so that a view keeps its place and its current row. A search through many entries goes on beside the event
/// loop, a few milliseconds at a time, and what it finds is added as it is found. Main thread only.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// All must outlive the model.
    HistoryListModel(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler,
                     QObject *parent = nullptr);

    const HistorySearch &search() const { return m_search; }
    /// The first entries that match are there when it returns, unless they lie far down.
    void setSearchText(const QString &text);
    /// Whether entries have not been looked at yet.
    bool isSearching() const { return m_nextLook != nullptr; }
    /// Looks at all entries now.
    void completeSearch();

    const QList<HistoryItem> &items() const { return m_items; }
    const HistoryItem &item(int row) const { return m_items[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The texts of a row are what a screen reader says; painting takes the entry itself.
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    /// The search has looked at all entries.
    void searchCompleted();

private:
    bool matches(const HistoryItem &item);
    QList<HistoryItem> lookFurther();
    void goOn();
    void lookLater();
    QList<HistoryItem> matchingItems();
    void follow();
    bool removeMissing(const QList<HistoryItem> &wanted);
    void insertNew(const QList<HistoryItem> &wanted);
    void updateStars(const QList<HistoryItem> &wanted);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    HistorySearch m_search;
    QList<HistoryItem> m_items;
    qsizetype m_lookedAt = 0; ///< so many of the store's entries, from the newest on
    std::unique_ptr<ScheduledTask> m_nextLook;
    QHash<QUuid, QString> m_folded; ///< of entries searched before
};

} // namespace lucentra
