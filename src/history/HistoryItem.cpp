#include "HistoryItem.h"

namespace lucentra {

namespace {

constexpr std::chrono::seconds referenceDate{978307200}; // 2001-01-01 00:00:00 UTC since 1970

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
    const auto sinceEpoch = std::chrono::round<std::chrono::milliseconds>(timestamp + referenceDate);
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
}

} // namespace lucentra
