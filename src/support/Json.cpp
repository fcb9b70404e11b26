#include "Json.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// A document with more would need over a hundred times its size in memory. No real answer, history or settings file
/// has nearly as many.
constexpr qsizetype mostContainers = 1'000'000;
constexpr qsizetype mostCommas = 8'000'000;

bool isAffordable(QByteArrayView json)
{
    qsizetype containers = 0;
    qsizetype commas = 0;
    forEachJsonMark(json, [&](qsizetype, char mark) {
        containers += mark == '[' || mark == '{' ? 1 : 0;
        commas += mark == ',' ? 1 : 0;
    });
    return containers <= mostContainers && commas <= mostCommas;
}

} // namespace

std::optional<QJsonDocument> parseJson(const QByteArray &bytes)
{
    if (bytes.contains('\0'))
        return std::nullopt; // the parser accepts it within a string
    if (!isAffordable(bytes))
        return std::nullopt;
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return std::nullopt;
    return document;
}

std::optional<QJsonArray> objectsIn(const QJsonValue &value)
{
    if (!value.isArray())
        return std::nullopt;
    const QJsonArray array = value.toArray();
    if (!std::all_of(array.begin(), array.end(), [](const QJsonValue &element) { return element.isObject(); }))
        return std::nullopt;
    return array;
}

QJsonValue firstOfType(const QJsonValue &array, const QString &type)
{
    for (const auto &element : array.toArray()) {
        if (element.toObject()["type"_L1] == type)
            return element;
    }
    return QJsonValue::Undefined;
}

QByteArray jsonBytes(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray jsonBytes(const QJsonArray &array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace lucentra
