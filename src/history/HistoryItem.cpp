#include "HistoryItem.h"

#include <algorithm>

namespace lucentra {

namespace {

constexpr std::chrono::seconds referenceDate{978307200}; // 2001-01-01 00:00:00 UTC since 1970
// Since 1970: the years of four digits, without a day at either end because of time zones.
constexpr HistoryItem::Timestamp earliest{-62135596800.0 + 86400};
constexpr HistoryItem::Timestamp latest{253402300799.0 - 86400};

} // namespace

HistoryItem newHistoryItem(const QString &originalText, const QString &translatedText)
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {.id = QUuid::createUuid(),
            .originalText = originalText,
            .translatedText = translatedText,
            .timestamp = sinceEpoch - referenceDate,
            .isStarred = false};
}

QDateTime dateOf(HistoryItem::Timestamp timestamp)
{
    const auto sinceEpoch = std::chrono::round<std::chrono::milliseconds>(
        std::clamp<HistoryItem::Timestamp>(timestamp + referenceDate, earliest, latest));
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
}

} // namespace lucentra
