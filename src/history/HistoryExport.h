#pragma once

#include "HistoryItem.h"
#include "Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace lucentra {

/// The history as other programs read it, UTF-8. Times are UTC by ISO 8601, to the second.
enum class ExportFormat {
    Csv,  ///< comma-separated with a line of titles: timestamp, original, translation, starred; as of RFC 4180
    Json, ///< an array of objects: id, timestamp, originalText, translatedText, isStarred
    Tsv   ///< for flash-card programs: original and translation, separated by a tab, without titles
};

/// By its name on the command line and as a file's suffix: "csv", "json", "tsv", in any case.
std::optional<ExportFormat> exportFormat(const QString &name);

/// The format's suffix, as `exportFormat` reads it.
QString exportSuffix(ExportFormat format);

QByteArray exportedHistory(const QList<HistoryItem> &items, ExportFormat format);

/// Writes a file whole or not at all, readable by its owner only. The failure's description is the system's.
Result<void> exportHistory(const QList<HistoryItem> &items, ExportFormat format, const QString &path);

} // namespace lucentra
