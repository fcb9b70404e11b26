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

/// Decodes what `encodeHistory` writes. Every item must have all five keys with values of the right types, otherwise
/// decoding fails as a whole. Further keys are ignored. The failure contains nothing of the content.
Result<QList<HistoryItem>> decodeHistory(const QByteArray &json);

/// The approximate size of an entry in the file, in bytes.
qint64 encodedSize(const HistoryItem &item);

struct HistoryFileContent
{
    QList<HistoryItem> items;
    bool isWhole = true; ///< false if the file is larger than 128 MiB; `items` are then the entries of its first part
};

/// Reads and decodes a file. A missing file is an empty history.
Result<HistoryFileContent> readHistoryFile(const QString &path);

/// Writes `encodeHistory` of the items by `writePrivateFile`; creates a missing folder with mode 0700.
Result<void> writeHistoryFile(const QString &path, const QList<HistoryItem> &items);

} // namespace lucentra
