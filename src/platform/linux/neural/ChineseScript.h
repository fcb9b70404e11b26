#pragma once

#include <QString>

namespace lucentra {

/// Simplified Chinese as Traditional, with the words of Taiwan. Any thread.
QString traditionalFromSimplified(const QString &text);
/// The other direction.
QString simplifiedFromTraditional(const QString &text);

} // namespace lucentra
