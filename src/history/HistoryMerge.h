#pragma once

#include "HistoryItem.h"

#include <QHash>
#include <QList>
#include <QUuid>

namespace lucentra {

/// A change of an entry by this process that isn't in the file yet. An altered entry that isn't in the list was
/// removed.
enum class HistoryChange {
    Added,  ///< recorded, or put back after it was deleted
    Altered ///< starred, unstarred or removed
};

using HistoryChanges = QHash<QUuid, HistoryChange>;

/// Merges this process's list with the changes that other processes made to the file: their new entries are inserted by
/// time, entries that they deleted are removed, and their stars apply to entries that this process hasn't changed.
QList<HistoryItem> mergedHistory(const QList<HistoryItem> &own, const HistoryChanges &changes,
                                 const QList<HistoryItem> &inFile);

/// Drops unstarred entries until the list is within the limits of `HistoryManager`, and returns the dropped ones. For
/// the number of entries the oldest are dropped; for the size the longest, so that a long entry doesn't displace many
/// short ones.
QList<QUuid> trimHistory(QList<HistoryItem> &items);

} // namespace lucentra
