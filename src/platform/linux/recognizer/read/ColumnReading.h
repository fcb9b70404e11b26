#pragma once

#include "TextRecognizer.h"
#include "find/TextColumns.h"
#include "find/TextMaps.h"
#include "read/LineReader.h"
#include "read/RoutedReading.h"

#include <QImage>

#include <functional>

namespace lucentra {

class ReaderPool;

/// What the columns of a group say, one reading a column.
struct ReadColumns
{
    ColumnGroup group;
    QList<Reading> readings;
    double simplified = 0; ///< how much they look like simplified Chinese, as far as that was asked (ChineseVariant.h)

    /// Whether this is writing at all.
    bool isPlausible() const;
};

/// The installed models of vertical writing among the languages asked for, the most expected first.
QList<ReadingLanguage> verticalLanguagesOf(const QStringList &tags);

/// Reads columns on the image turned by 90 degrees counter-clockwise, with all workers. `ink` is what the net sees of
/// the letters on it. All are in one of the languages, which some of the columns tell. What there is no time for, or
/// isn't wanted any more, stays empty. Blocks.
QList<ReadColumns> readColumns(const QList<ColumnGroup> &groups, const QImage &turned, const SureMap &ink,
                               const QList<ReadingLanguage> &languages, LineReader &reader, ReaderPool &pool,
                               const std::function<bool()> &isWanted);

/// The columns as observations of the upright image, the group at the top right first.
QList<RecognizedTextObservation> observationsOf(const QList<ReadColumns> &groups, const QSize &size);

} // namespace lucentra
