#pragma once

#include "HistoryItem.h"

namespace lucentra {

/// An entry named by its source text, so many seconds after the reference date.
inline HistoryItem item(const QString &name, double seconds, bool isStarred = false)
{
    return {.id = QUuid::createUuidV5(QUuid(), name),
            .originalText = name,
            .translatedText = name.toUpper(),
            .timestamp = HistoryItem::Timestamp(seconds),
            .isStarred = isStarred};
}

} // namespace lucentra
