#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace lucentra {

/// Calls a function with the position and the character of each bracket and comma outside of strings.
template <typename Function>
void forEachJsonMark(QByteArrayView json, Function function)
{
    bool isInString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char byte = json[i];
        if (byte == '"')
            isInString = !isInString;
        else if (isInString)
            i += byte == '\\' ? 1 : 0;
        else if (byte == '[' || byte == ']' || byte == '{' || byte == '}' || byte == ',')
            function(i, byte);
    }
}

/// The object or array that the bytes hold. Returns nullopt if they aren't valid UTF-8, hold a NUL byte, aren't JSON,
/// are nested more than 1,024 levels deep, or hold more than a million objects and arrays or eight million commas,
/// which would take many times their size in memory. Of a key that an object repeats, the last value counts.
std::optional<QJsonDocument> parseJson(const QByteArray &bytes);

/// The value as an array. Returns nullopt if it isn't an array that contains only objects.
std::optional<QJsonArray> objectsIn(const QJsonValue &value);

/// The first element of an array with the given "type". `Undefined` if there is none.
QJsonValue firstOfType(const QJsonValue &array, const QString &type);

/// The compact bytes of an object or array.
QByteArray jsonBytes(const QJsonObject &object);
QByteArray jsonBytes(const QJsonArray &array);

} // namespace lucentra
