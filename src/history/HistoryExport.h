#pragma once

#include "HistoryItem.h"
#include "Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace lucentra {

/// Formats of the history for other programs, in UTF-8. Times are ISO 8601 in UTC, to the second. In CSV and TSV an
/// apostrophe is put before texts that a spreadsheet would take for a formula. TSV is HTML-escaped, since flash cards
/// are HTML.
enum class ExportFormat {
    Csv,  ///< RFC 4180 with a header line: timestamp, original, translation, starred
    Json, ///< an array of objects: id, timestamp, originalText, translatedText, isStarred
    Tsv,  ///< for flash-card programs: original and translation, separated by a tab, without a header
    Lines ///< for terminals and scripts: like `Tsv` with unchanged texts; not offered for files
};

/// The format of a name on the command line or of a file's suffix: "csv", "json", "tsv", case-insensitive.
std::optional<ExportFormat> exportFormat(const QString &name);

/// The format's suffix, see `exportFormat`.
QString exportSuffix(ExportFormat format);

QByteArray exportedHistory(const QList<HistoryItem> &items, ExportFormat format);

/// Writes a file atomically with mode 0600. The failure's description is the system's.
Result<void> exportHistory(const QList<HistoryItem> &items, ExportFormat format, const QString &path);

} // namespace lucentra
