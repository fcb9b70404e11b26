#include "HistoryExport.h"

#include "HistoryManager.h"
#include "PrivateFile.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QString timeOf(const HistoryItem &item)
{
    return dateOf(item.timestamp).toUTC().toString(Qt::ISODate);
}

/// Spreadsheets may use any of these as the separator, so that the text after it would be another cell.
bool needsQuotes(QChar c)
{
    return QStringView(u",;\t|\"\n\r").contains(c);
}

QString field(QString text)
{
    if (std::none_of(text.cbegin(), text.cend(), needsQuotes))
        return text;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

/// A cell that begins with one of these is a formula, which may read files and open addresses.
QString harmless(const QString &text)
{
    constexpr QStringView formulaStarts = u"=+-@\t\r";
    return !text.isEmpty() && formulaStarts.contains(text.front()) ? u'\'' + text : text;
}

QString harmlessMarkup(QString text)
{
    return harmless(text.replace(u'&', u"&amp;"_s).replace(u'<', u"&lt;"_s).replace(u'>', u"&gt;"_s));
}

QString line(const QStringList &fields, QChar separator)
{
    QStringList quoted;
    for (const QString &each : fields)
        quoted.append(field(each));
    return quoted.join(separator);
}

QByteArray csv(const QList<HistoryItem> &items)
{
    QString text = u"timestamp,original,translation,starred\r\n"_s;
    for (const HistoryItem &item : items)
        text += line({timeOf(item), harmless(item.originalText), harmless(item.translatedText),
                      item.isStarred ? u"true"_s : u"false"_s},
                     u',') +
                u"\r\n"_s;
    return text.toUtf8();
}

QByteArray tsv(const QList<HistoryItem> &items, QString (*prepared)(QString))
{
    QString text;
    for (const HistoryItem &item : items)
        text += line({prepared(item.originalText), prepared(item.translatedText)}, u'\t') + u'\n';
    return text.toUtf8();
}

QByteArray json(const QList<HistoryItem> &items)
{
    QJsonArray array;
    for (const HistoryItem &item : items)
        array.append(QJsonObject{{u"id"_s, item.id.toString(QUuid::WithoutBraces).toUpper()},
                                 {u"timestamp"_s, timeOf(item)},
                                 {u"originalText"_s, item.originalText},
                                 {u"translatedText"_s, item.translatedText},
                                 {u"isStarred"_s, item.isStarred}});
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

} // namespace

std::optional<ExportFormat> exportFormat(const QString &name)
{
    const QString lower = name.toLower();
    for (const ExportFormat format : {ExportFormat::Csv, ExportFormat::Json, ExportFormat::Tsv}) {
        if (lower == exportSuffix(format))
            return format;
    }
    return std::nullopt;
}

QString exportSuffix(ExportFormat format)
{
    return format == ExportFormat::Csv ? u"csv"_s : format == ExportFormat::Json ? u"json"_s : u"tsv"_s;
}

QByteArray exportedHistory(const QList<HistoryItem> &items, ExportFormat format)
{
    if (format == ExportFormat::Csv)
        return csv(items);
    if (format == ExportFormat::Json)
        return json(items);
    return format == ExportFormat::Lines ? tsv(items, [](QString text) { return text; }) : tsv(items, harmlessMarkup);
}

Result<void> exportHistory(const QList<HistoryItem> &items, ExportFormat format, const QString &path)
{
    const QFileInfo target(path);
    const QFileInfo history(HistoryManager::userFilePath());
    // To Qt, files that don't exist are the same one. An export can't be read back as a history.
    if (target.absoluteFilePath() == history.absoluteFilePath() || (target.exists() && target == history))
        return tl::unexpected(Failure{.domain = u"History"_s, .code = 0, .description = qt_error_string(EPERM)});
    return writePrivateFile(path, exportedHistory(items, format));
}

} // namespace lucentra
