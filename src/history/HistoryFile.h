#pragma once

#include "HistoryItem.h"
#include "Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace lucentra {

/// The history as JSON: an array of objects, newest first, with the keys "id" (UUID in capitals), "originalText",
/// "translatedText", "timestamp" (seconds since 2001-01-01 UTC) and "isStarred"; one line, UTF-8.
QByteArray encodeHistory(const QList<HistoryItem> &items);

/// Reads what `encodeHistory` writes, in the order of the file. All five keys are required with values of their types;
/// one item without fails the whole. Further keys are ignored. The failure tells the reason but none of the content.
Result<QList<HistoryItem>> decodeHistory(const QByteArray &json);

/// Bytes that an entry takes in the file, give or take a few.
qint64 encodedSize(const HistoryItem &item);

struct HistoryFileContent
{
    QList<HistoryItem> items;
    bool isWhole = true; ///< false: the file is larger than 128 MiB, and these are the entries of its first part
};

/// Reads and decodes a file; a missing one is an empty history.
Result<HistoryFileContent> readHistoryFile(const QString &path);

/// Replaces the file by `encodeHistory` of the items, private and whole; a missing folder is made, for the owner only.
Result<void> writeHistoryFile(const QString &path, const QList<HistoryItem> &items);

/// Moves a file that could not be read out of the way: beside it, as "history.unreadable-<time>.json". One that
/// is gone by now is no failure.
Result<void> keepUnreadableFile(const QString &path);

} // namespace lucentra
