#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <chrono>

namespace lucentra {

/// One finished translation.
struct HistoryItem
{
    /// Seconds since 2001-01-01 00:00:00 UTC, the date that the file's times are counted from.
    using Timestamp = std::chrono::duration<double>;

    QUuid id;
    QString originalText;
    QString translatedText;
    Timestamp timestamp{}; ///< when it was made
    bool isStarred = false;

    bool operator==(const HistoryItem &) const = default;
};

/// A new item of this moment, with an identity of its own.
HistoryItem newHistoryItem(const QString &originalText, const QString &translatedText);

/// The moment as a date in the local time zone. What lies outside the years 1 to 9999 becomes the nearest date within.
QDateTime dateOf(HistoryItem::Timestamp timestamp);

} // namespace lucentra
