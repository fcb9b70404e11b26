#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace lucentra {

/// The object or array that the bytes hold; nothing where they aren't valid UTF-8, hold a NUL byte, aren't JSON, are
/// nested more than 1,024 levels deep or hold more than a million opening brackets. Of a key that an object repeats,
/// the last value counts.
std::optional<QJsonDocument> parseJson(const QByteArray &bytes);

/// The value as an array that holds objects only; nothing where it is none.
std::optional<QJsonArray> objectsIn(const QJsonValue &value);

/// The first element of an array whose "type" is the given one; `Undefined` where there is none.
QJsonValue firstOfType(const QJsonValue &array, const QString &type);

/// The compact bytes of an object or array.
QByteArray jsonBytes(const QJsonObject &object);
QByteArray jsonBytes(const QJsonArray &array);

} // namespace lucentra
