#include "HistoryMerge.h"

#include "HistoryFile.h"
#include "HistoryManager.h"

#include <algorithm>
#include <utility>

namespace lucentra {

QList<HistoryItem> mergedHistory(const QList<HistoryItem> &own, const HistoryChanges &changes,
                                 const QList<HistoryItem> &inFile)
{
    QHash<QUuid, bool> starsInFile;
    for (const HistoryItem &item : inFile)
        starsInFile.insert(item.id, item.isStarred);
    QList<HistoryItem> kept;
    QHash<QUuid, bool> ownStars;
    for (HistoryItem item : own) {
        ownStars.insert(item.id, item.isStarred);
        const auto change = changes.constFind(item.id);
        const auto star = starsInFile.constFind(item.id);
        const bool isDeletedByOthers =
            star == starsInFile.cend() && (change == changes.cend() || *change != HistoryChange::Added);
        if (isDeletedByOthers)
            continue;
        if (change == changes.cend())
            item.isStarred = *star;
        kept.append(std::move(item));
    }
    QList<HistoryItem> added;
    std::copy_if(inFile.cbegin(), inFile.cend(), std::back_inserter(added),
                 [&](const HistoryItem &item) { return !ownStars.contains(item.id) && !changes.contains(item.id); });
    if (added.isEmpty())
        return kept;
    QList<HistoryItem> merged;
    merged.reserve(kept.size() + added.size());
    auto next = added.cbegin();
    for (const HistoryItem &item : std::as_const(kept)) {
        while (next != added.cend() && next->timestamp > item.timestamp)
            merged.append(*next++);
        merged.append(item);
    }
    std::copy(next, added.cend(), std::back_inserter(merged));
    return merged;
}

QList<QUuid> trimHistory(QList<HistoryItem> &items)
{
    QList<QUuid> dropped;
    const auto drop = [&](qsizetype index) { dropped.append(items.takeAt(index).id); };
    for (qsizetype i = items.size() - 1; i >= 0 && items.size() > HistoryManager::maxItems; --i) {
        if (!items[i].isStarred)
            drop(i);
    }
    QList<qint64> sizes;
    qint64 size = 0;
    for (const HistoryItem &item : std::as_const(items))
        size += sizes.emplaceBack(encodedSize(item));
    while (size > HistoryManager::maxBytes) {
        qsizetype longest = -1;
        for (qsizetype i = items.size() - 1; i >= 0; --i) {
            if (!items[i].isStarred && (longest < 0 || sizes[i] > sizes[longest]))
                longest = i;
        }
        if (longest < 0)
            break;
        size -= sizes.takeAt(longest);
        drop(longest);
    }
    return dropped;
}

} // namespace lucentra
