#pragma once

#include "HistoryItem.h"

#include <QHash>
#include <QList>
#include <QUuid>

namespace lucentra {

/// What this process did to an entry that its file doesn't show yet. An entry that is in the list no more was removed.
enum class HistoryChange {
    Added,  ///< recorded, or put back after it was deleted
    Altered ///< starred, unstarred or removed
};

using HistoryChanges = QHash<QUuid, HistoryChange>;

/// This process's list with what other processes did to the file meanwhile: their new entries are at the places that
/// their times give them, what they deleted is gone, and their stars count where this process changed none.
QList<HistoryItem> mergedHistory(const QList<HistoryItem> &own, const HistoryChanges &changes,
                                 const QList<HistoryItem> &inFile);

/// Drops unstarred entries until the list keeps the limits of `HistoryManager`, and returns what was dropped. Above the
/// number the oldest go. Above the size the longest go, so that no long entry costs the place of many short ones.
QList<QUuid> trimHistory(QList<HistoryItem> &items);

} // namespace lucentra
