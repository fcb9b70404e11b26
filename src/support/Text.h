#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace lucentra {

/// The number of user-perceived characters (grapheme clusters), not of UTF-16 units.
qsizetype characterCount(QStringView text);

/// The first `count` user-perceived characters.
QString firstCharacters(const QString &text, qsizetype count);

/// Decodes UTF-8. Returns nullopt if the bytes are not valid (overlong forms, surrogates, cut-off sequences). An
/// initial byte-order mark stays.
std::optional<QString> decodeUtf8(QByteArrayView bytes);

} // namespace lucentra
