#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace lucentra {

/// "Characters" of a text are what a reader perceives as one: grapheme clusters, not UTF-16 units.
qsizetype characterCount(QStringView text);

/// The first `count` user-perceived characters.
QString firstCharacters(const QString &text, qsizetype count);

/// The text of UTF-8 bytes, or nothing where they are not valid UTF-8 (overlong forms, surrogates, cut-off
/// sequences). An initial byte-order mark stays.
std::optional<QString> decodeUtf8(QByteArrayView bytes);

} // namespace lucentra
