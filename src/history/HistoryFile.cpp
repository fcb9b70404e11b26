#include "HistoryFile.h"

#include "PrivateFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <optional>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto idKey = "id"_L1;
constexpr auto originalTextKey = "originalText"_L1;
constexpr auto translatedTextKey = "translatedText"_L1;
constexpr auto timestampKey = "timestamp"_L1;
constexpr auto isStarredKey = "isStarred"_L1;

/// Reading takes several times as much memory. A hundred thousand entries of 500 characters are less.
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

} // namespace

QByteArray encodeHistory(const QList<HistoryItem> &items)
{
    QJsonArray array;
    for (const HistoryItem &item : items)
        array.append(objectOf(item));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

Result<QList<HistoryItem>> decodeHistory(const QByteArray &json)
{
    if (!json.isValidUtf8())
        return failure(u"not UTF-8"_s);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return failure(u"%1 at byte %2"_s.arg(error.errorString()).arg(error.offset));
    if (!document.isArray())
        return failure(u"not a JSON array"_s);
    QList<HistoryItem> items;
    const QJsonArray array = document.array();
    items.reserve(array.size());
    for (const auto &value : array) {
        const auto item = itemOf(value.toObject());
        if (!item)
            return failure(u"entry %1 lacks a value or has one of a wrong type"_s.arg(items.size()));
        items.append(*item);
    }
    return items;
}

Result<QList<HistoryItem>> readHistoryFile(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return QList<HistoryItem>();
    if (!QFileInfo(path).isFile()) // a pipe would never end, nor would some devices
        return failure(qt_error_string(ENOTSUP));
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.errorString());
    if (file.size() > mostBytes)
        return failure(u"the file is larger than %1 MiB"_s.arg(mostBytes >> 20));
    const QByteArray json = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failure(file.errorString());
    return decodeHistory(json);
}

Result<void> writeHistoryFile(const QString &path, const QList<HistoryItem> &items)
{
    createFolderOf(path);
    return writePrivateFile(path, encodeHistory(items));
}

Result<void> keepUnreadableFile(const QString &path)
{
    const QFileInfo info(path);
    const QString stem = info.path() + u'/' + info.completeBaseName() + u".unreadable-"_s +
                         QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmsszzz'Z'"_s);
    QFile file(path);
    if (!file.exists())
        return {};
    if (!file.rename(stem + u'.' + info.suffix()))
        return failure(file.errorString());
    file.setPermissions(ownerOnly);
    return {};
}

} // namespace lucentra
