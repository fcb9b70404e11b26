#include "HistoryFile.h"

#include "Json.h"
#include "PrivateFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <functional>
#include <numeric>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto idKey = "id"_L1;
constexpr auto originalTextKey = "originalText"_L1;
constexpr auto translatedTextKey = "translatedText"_L1;
constexpr auto timestampKey = "timestamp"_L1;
constexpr auto isStarredKey = "isStarred"_L1;

/// Reading needs several times as much memory. A hundred thousand entries of 500 characters are smaller.
constexpr qint64 mostBytes = 128LL << 20;

tl::unexpected<Failure> failure(const QString &description)
{
    return tl::unexpected(Failure{.domain = u"History"_s, .code = 0, .description = description});
}

QJsonObject objectOf(const HistoryItem &item)
{
    return {{idKey, item.id.toString(QUuid::WithoutBraces).toUpper()},
            {originalTextKey, item.originalText},
            {translatedTextKey, item.translatedText},
            {timestampKey, item.timestamp.count()},
            {isStarredKey, item.isStarred}};
}

/// Only the canonical form of 36 characters, in either case.
std::optional<QUuid> uuidOf(const QString &text)
{
    const QUuid uuid = QUuid::fromString(text);
    if (uuid.toString(QUuid::WithoutBraces) != text.toLower())
        return std::nullopt;
    return uuid;
}

std::optional<HistoryItem> itemOf(const QJsonObject &object)
{
    const QJsonValue originalText = object.value(originalTextKey);
    const QJsonValue translatedText = object.value(translatedTextKey);
    const QJsonValue timestamp = object.value(timestampKey);
    const QJsonValue isStarred = object.value(isStarredKey);
    const auto id = uuidOf(object.value(idKey).toString());
    if (!id || !originalText.isString() || !translatedText.isString() || !timestamp.isDouble() || !isStarred.isBool())
        return std::nullopt;
    return HistoryItem{.id = *id,
                       .originalText = originalText.toString(),
                       .translatedText = translatedText.toString(),
                       .timestamp = HistoryItem::Timestamp(timestamp.toDouble()),
                       .isStarred = isStarred.toBool()};
}

qint64 encodedSize(const QString &text)
{
    return std::transform_reduce(text.cbegin(), text.cend(), qint64(0), std::plus<>(), [](QChar unit) {
        const char16_t code = unit.unicode();
        if (code < 0x20)
            return 6; // a few need only two
        if (code < 0x80)
            return code == u'"' || code == u'\\' ? 2 : 1;
        return code < 0x800 || unit.isSurrogate() ? 2 : 3;
    });
}

/// Completes an array that was cut off, without its last, incomplete entry.
QByteArray wholeEntries(QByteArray json)
{
    qsizetype depth = 0;
    qsizetype end = 0;
    forEachJsonMark(json, [&](qsizetype at, char mark) {
        depth += mark == '[' || mark == '{' ? 1 : 0;
        depth -= mark == ']' || mark == '}' ? 1 : 0;
        if (mark == '}' && depth == 1)
            end = at + 1;
    });
    json.truncate(end);
    return json + ']';
}

} // namespace

QByteArray encodeHistory(const QList<HistoryItem> &items)
{
    QByteArray json = "[";
    for (const HistoryItem &item : items) { // one at a time: as a whole they would take several times the memory
        json += QJsonDocument(objectOf(item)).toJson(QJsonDocument::Compact);
        json += ',';
    }
    if (!items.isEmpty())
        json.chop(1);
    return json + ']';
}

Result<QList<HistoryItem>> decodeHistory(const QByteArray &json)
{
    const auto document = parseJson(json);
    if (!document || !document->isArray())
        return failure(u"not a JSON array"_s);
    QList<HistoryItem> items;
    const QJsonArray array = document->array();
    items.reserve(array.size());
    for (const auto &value : array) {
        const auto item = itemOf(value.toObject());
        if (!item)
            return failure(u"entry %1 lacks a value or has one of a wrong type"_s.arg(items.size()));
        items.append(*item);
    }
    return items;
}

qint64 encodedSize(const HistoryItem &item)
{
    constexpr qint64 keysAndNumbers = 160;
    return keysAndNumbers + encodedSize(item.originalText) + encodedSize(item.translatedText);
}

Result<HistoryFileContent> readHistoryFile(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return HistoryFileContent();
    if (!QFileInfo(path).isFile()) // reading a pipe or a device may never end
        return failure(qt_error_string(ENOTSUP));
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.errorString());
    const bool isWhole = file.size() <= mostBytes;
    const QByteArray json = isWhole ? file.readAll() : wholeEntries(file.read(mostBytes));
    if (file.error() != QFileDevice::NoError)
        return failure(file.errorString());
    auto items = decodeHistory(json);
    if (!items)
        return tl::unexpected(items.error());
    return HistoryFileContent{.items = std::move(*items), .isWhole = isWhole};
}

Result<void> writeHistoryFile(const QString &path, const QList<HistoryItem> &items)
{
    createFolderOf(path);
    return writePrivateFile(path, encodeHistory(items));
}

} // namespace lucentra
