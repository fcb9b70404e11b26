#pragma once

#include "HistoryItem.h"
#include "HistorySearch.h"

#include <QAbstractListModel>
#include <QHash>

namespace lucentra {

class HistoryManager;
class LocalizationManager;

/// The entries of the store that match the search, in the store's order. It follows the store's changes entry by
/// entry, so that a view keeps its place and its current row. Main thread only.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// Both must outlive the model.
    HistoryListModel(HistoryManager &manager, const LocalizationManager &texts, QObject *parent = nullptr);

    const HistorySearch &search() const { return m_search; }
    void setSearchText(const QString &text);

    const QList<HistoryItem> &items() const { return m_items; }
    const HistoryItem &item(int row) const { return m_items[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The texts of a row are what a screen reader says; painting takes the entry itself.
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QList<HistoryItem> matchingItems();
    void follow();
    bool removeMissing(const QList<HistoryItem> &wanted);
    void insertNew(const QList<HistoryItem> &wanted);
    void updateStars(const QList<HistoryItem> &wanted);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    HistorySearch m_search;
    QList<HistoryItem> m_items;
    QHash<QUuid, QString> m_folded; ///< of entries searched before
};

} // namespace lucentra
