#include "Commands.h"

#include "Services.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QString ageText(qint64 seconds, const LocalizationManager &texts)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    if (seconds < 2 * hour)
        return texts.formatted(u"%d 分鐘前建立"_s, int(seconds / minute));
    if (seconds < 2 * day)
        return texts.formatted(u"%d 小時前建立"_s, int(seconds / hour));
    return texts.formatted(u"%d 天前建立"_s, int(seconds / day));
}

/// The pairs by source language, one line each: "de → en zh-Hant".
QStringList pairLines(const OnDeviceServiceStatus &service, const LocalizationManager &texts)
{
    if (service.pairs.isEmpty())
        return {u"    "_s + texts.localized(service.isGettingReady ? u"正在收集這部電腦上的譯文，請稍後再試。"_s
                                                                   : u"沒有可用的語言"_s)};
    QMap<QString, QStringList> targets;
    for (const LanguagePair &pair : service.pairs)
        targets[pair.source].append(pair.target);
    QStringList lines;
    for (auto it = targets.cbegin(); it != targets.cend(); ++it)
        lines.append(u"    "_s + it.key() + u" → "_s + it.value().join(u' '));
    return lines;
}

QString page(const QList<OnDeviceServiceStatus> &services, const LocalizationManager &texts)
{
    QStringList lines;
    for (const OnDeviceServiceStatus &service : services) {
        QString title = service.name;
        if (service.phraseCount > 0)
            title += u"  "_s + texts.formatted(u"%d 個詞句"_s, int(service.phraseCount));
        if (service.cacheAgeSeconds >= 0)
            title += u"  "_s + ageText(service.cacheAgeSeconds, texts);
        lines << title << pairLines(service, texts);
        if (!service.traditionalChineseBy.isEmpty())
            lines << u"    "_s + texts.formatted(u"繁體中文由 %@ 與簡體中文互相轉換。"_s, service.traditionalChineseBy);
        if (!service.addableBy.isEmpty())
            lines << u"    "_s + texts.formatted(u"安裝這些套件也有幫助：%@"_s, service.addableBy.join(u' '));
        if (service.isStripped)
            lines << u"    "_s + texts.localized(u"這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。"_s);
    }
    return lines.join(u'\n');
}

QJsonObject toJson(const OnDeviceServiceStatus &service)
{
    QJsonArray pairs;
    for (const LanguagePair &pair : service.pairs)
        pairs.append(QJsonArray{pair.source, pair.target});
    return {{u"name"_s, service.name},
            {u"pairs"_s, pairs},
            {u"phrases"_s, service.phraseCount},
            {u"cacheAgeSeconds"_s, service.cacheAgeSeconds < 0 ? QJsonValue() : QJsonValue(service.cacheAgeSeconds)},
            {u"stripped"_s, service.isStripped},
            {u"traditionalChineseBy"_s,
             service.traditionalChineseBy.isEmpty() ? QJsonValue() : QJsonValue(service.traditionalChineseBy)},
            {u"addableBy"_s, QJsonArray::fromStringList(service.addableBy)}};
}

} // namespace

Result<CommandOutput> languagesCommand(const Invocation &invocation, Services &services)
{
    const QList<OnDeviceServiceStatus> all = services.onDeviceStatus(); // waits until the phrases are collected
    if (!invocation.json)
        return CommandOutput{.answer = page(all, services.texts())};
    QJsonArray array;
    for (const OnDeviceServiceStatus &service : all)
        array.append(toJson(service));
    return CommandOutput{
        .answer = QString::fromUtf8(QJsonDocument(QJsonObject{{u"services"_s, array}}).toJson(QJsonDocument::Compact))};
}

} // namespace lucentra
