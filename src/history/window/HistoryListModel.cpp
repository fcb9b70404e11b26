#include "HistoryListModel.h"

#include "HistoryManager.h"
#include "LocalizationManager.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <iterator>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lucentra {

namespace {

/// If more rows have changed, resetting the model is faster.
constexpr qsizetype mostSingleChanges = 100;
/// How long a search may block the event loop, not counting layout and painting.
constexpr auto lookDuration = 6ms;
/// How many entries are searched between checks of the time.
constexpr qsizetype lookStep = 16;

} // namespace

HistoryListModel::HistoryListModel(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler)
    : m_manager(manager)
    , m_texts(texts)
    , m_scheduler(scheduler)
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
    if (m_search.isEmpty())
        m_folded.clear();
    m_lookedAt = 0;
    m_items = lookFurther();
    endResetModel();
    lookLater();
}

bool HistoryListModel::matches(const HistoryItem &item)
{
    QString &folded = m_folded[item.id];
    if (folded.isEmpty())
        folded = m_search.folded(item);
    return m_search.matchesFolded(folded);
}

/// Searches for a few milliseconds and returns the matches.
QList<HistoryItem> HistoryListModel::lookFurther()
{
    const QList<HistoryItem> &all = m_manager.history();
    if (m_search.isEmpty()) {
        m_lookedAt = all.size();
        return all;
    }
    const QDeadlineTimer end(lookDuration);
    QList<HistoryItem> found;
    for (; m_lookedAt < all.size(); ++m_lookedAt) {
        if (m_lookedAt % lookStep == lookStep - 1 && end.hasExpired())
            break;
        if (matches(all[m_lookedAt]))
            found.append(all[m_lookedAt]);
    }
    return found;
}

void HistoryListModel::goOn()
{
    if (const QList<HistoryItem> found = lookFurther(); !found.isEmpty()) {
        beginInsertRows({}, int(m_items.size()), int(m_items.size() + found.size()) - 1);
        m_items += found;
        endInsertRows();
    }
    lookLater();
}

void HistoryListModel::lookLater()
{
    if (m_lookedAt < m_manager.history().size()) {
        m_nextLook = m_scheduler.after(0ms, [this] { goOn(); });
        return;
    }
    m_nextLook.reset();
    Q_EMIT searchCompleted();
}

void HistoryListModel::completeSearch()
{
    while (isSearching())
        goOn();
}

QList<HistoryItem> HistoryListModel::matchingItems()
{
    const QList<HistoryItem> &all = m_manager.history();
    if (m_search.isEmpty())
        return all;
    QList<HistoryItem> matching;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(matching),
                 [this](const HistoryItem &item) { return matches(item); });
    return matching;
}

void HistoryListModel::follow()
{
    const QList<HistoryItem> wanted = matchingItems();
    m_lookedAt = m_manager.history().size();
    QSet<QUuid> ids;
    for (const HistoryItem &item : wanted)
        ids.insert(item.id);
    const qsizetype gone = std::count_if(m_items.cbegin(), m_items.cend(),
                                         [&](const HistoryItem &item) { return !ids.contains(item.id); });
    const qsizetype come = wanted.size() - (m_items.size() - gone);
    if (gone + come <= mostSingleChanges)
        changeRows(wanted, ids);
    if (m_items != wanted) {
        beginResetModel();
        m_items = wanted;
        endResetModel();
    }
    if (isSearching())
        lookLater(); // which reports that the search is complete
}

/// Removes, inserts and changes single rows. Entries that have changed places stay for a reset.
void HistoryListModel::changeRows(const QList<HistoryItem> &wanted, const QSet<QUuid> &ids)
{
    qsizetype inserted = 0;
    for (int row = 0; row < std::max(m_items.size(), wanted.size()) && inserted <= mostSingleChanges;) {
        const bool isOurs = row < m_items.size();
        if (isOurs && !ids.contains(m_items[row].id)) {
            beginRemoveRows({}, row, row);
            m_items.removeAt(row);
            endRemoveRows();
            continue;
        }
        if (row < wanted.size() && (!isOurs || m_items[row].id != wanted[row].id)) {
            beginInsertRows({}, row, row);
            m_items.insert(row, wanted[row]);
            endInsertRows();
            ++inserted;
        } else if (row < wanted.size() && m_items[row] != wanted[row]) {
            m_items[row] = wanted[row];
            Q_EMIT dataChanged(index(row), index(row));
        }
        ++row;
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
