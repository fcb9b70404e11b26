#pragma once

#include "HistoryItem.h"
#include "Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace lucentra {

/// The history as other programs read it, UTF-8. Times are UTC by ISO 8601, to the second. In spreadsheets a text that
/// would be taken for a formula has an apostrophe in front of it, and for flash cards, which are HTML, texts are
/// escaped.
enum class ExportFormat {
    Csv,  ///< comma-separated with a line of titles: timestamp, original, translation, starred; as of RFC 4180
    Json, ///< an array of objects: id, timestamp, originalText, translatedText, isStarred
    Tsv,  ///< for flash-card programs: original and translation, separated by a tab, without titles
    Lines ///< for a terminal or a script: as `Tsv`, but with the texts as they are; no file has this format
};

/// By its name on the command line and as a file's suffix: "csv", "json", "tsv", in any case.
std::optional<ExportFormat> exportFormat(const QString &name);

/// The format's suffix, as `exportFormat` reads it.
QString exportSuffix(ExportFormat format);

QByteArray exportedHistory(const QList<HistoryItem> &items, ExportFormat format);

/// Writes a file whole or not at all, readable by its owner only. The failure's description is the system's.
Result<void> exportHistory(const QList<HistoryItem> &items, ExportFormat format, const QString &path);

} // namespace lucentra
