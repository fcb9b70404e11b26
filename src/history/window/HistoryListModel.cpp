#include "HistoryListModel.h"

#include "HistoryManager.h"
#include "LocalizationManager.h"

#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Above so many changed rows, a view is quicker told that everything is new.
constexpr qsizetype mostSingleChanges = 100;

} // namespace

HistoryListModel::HistoryListModel(HistoryManager &manager, const LocalizationManager &texts, QObject *parent)
    : QAbstractListModel(parent)
    , m_manager(manager)
    , m_texts(texts)
    , m_items(manager.history())
{
    connect(&manager, &HistoryManager::changed, this, &HistoryListModel::follow);
}

void HistoryListModel::setSearchText(const QString &text)
{
    if (text == m_search.text())
        return;
    beginResetModel();
    m_search = HistorySearch(text);
    m_items = matchingItems();
    endResetModel();
}

QList<HistoryItem> HistoryListModel::matchingItems()
{
    const QList<HistoryItem> &all = m_manager.history();
    if (m_search.isEmpty()) {
        m_folded.clear();
        return all;
    }
    m_folded.reserve(all.size());
    QList<HistoryItem> matching;
    for (const HistoryItem &item : all) {
        QString &folded = m_folded[item.id];
        if (folded.isEmpty())
            folded = m_search.folded(item);
        if (m_search.matchesFolded(folded))
            matching.append(item);
    }
    return matching;
}

void HistoryListModel::follow()
{
    const QList<HistoryItem> wanted = matchingItems();
    if (qAbs(wanted.size() - m_items.size()) <= mostSingleChanges && removeMissing(wanted)) {
        insertNew(wanted);
        updateStars(wanted);
    }
    if (m_items == wanted)
        return;
    beginResetModel();
    m_items = wanted;
    endResetModel();
}

/// False where that would be too many.
bool HistoryListModel::removeMissing(const QList<HistoryItem> &wanted)
{
    QSet<QUuid> ids;
    ids.reserve(wanted.size());
    for (const HistoryItem &item : wanted)
        ids.insert(item.id);
    QList<int> missing;
    for (int row = int(m_items.size()) - 1; row >= 0; --row) {
        if (!ids.contains(m_items[row].id))
            missing.append(row);
    }
    if (missing.size() > mostSingleChanges)
        return false;
    for (const int row : std::as_const(missing)) {
        beginRemoveRows({}, row, row);
        m_items.removeAt(row);
        endRemoveRows();
    }
    return true;
}

void HistoryListModel::insertNew(const QList<HistoryItem> &wanted)
{
    const qsizetype most = wanted.size() - m_items.size();
    qsizetype inserted = 0;
    for (int row = 0; row < wanted.size() && inserted < most; ++row) {
        if (row < m_items.size() && m_items[row].id == wanted[row].id)
            continue;
        beginInsertRows({}, row, row);
        m_items.insert(row, wanted[row]);
        endInsertRows();
        ++inserted;
    }
}

void HistoryListModel::updateStars(const QList<HistoryItem> &wanted)
{
    const auto rows = std::min(m_items.size(), wanted.size());
    for (int row = 0; row < rows; ++row) {
        if (m_items[row].id != wanted[row].id || m_items[row] == wanted[row])
            continue;
        m_items[row] = wanted[row];
        Q_EMIT dataChanged(index(row), index(row));
    }
}

int HistoryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant HistoryListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_items.size())
        return {};
    const HistoryItem &item = m_items[index.row()];
    if (role == Qt::DisplayRole)
        return item.originalText;
    if (role == Qt::AccessibleTextRole)
        return QString(item.originalText + u'\n' + item.translatedText);
    if (role == Qt::AccessibleDescriptionRole)
        return item.isStarred ? m_texts.localized(u"已收藏"_s) : QString();
    return {};
}

} // namespace lucentra
