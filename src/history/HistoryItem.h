#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <chrono>

namespace lucentra {

/// One finished translation.
struct HistoryItem
{
    /// Seconds since 2001-01-01 00:00:00 UTC, as in the file.
    using Timestamp = std::chrono::duration<double>;

    QUuid id;
    QString originalText;
    QString translatedText;
    Timestamp timestamp{}; ///< time of creation
    bool isStarred = false;

    bool operator==(const HistoryItem &) const = default;
};

/// A new item with the current time and a new id.
HistoryItem newHistoryItem(const QString &originalText, const QString &translatedText);

/// Converts a timestamp to local time, clamped to the years 1 to 9999.
QDateTime dateOf(HistoryItem::Timestamp timestamp);

} // namespace lucentra
