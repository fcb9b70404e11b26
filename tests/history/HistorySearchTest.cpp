#include "HistorySearch.h"
#include "Columns.h"
#include "HistoryExport.h"
#include "TestProgram.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

HistoryItem entry(const QString &original, const QString &translation)
{
    HistoryItem made = newHistoryItem(original, translation);
    made.timestamp = HistoryItem::Timestamp(86400.75);
    return made;
}

} // namespace

class HistorySearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matching_data()
    {
        const auto row =
            columns<QString, QString, QString, QString, bool>("search", "original", "translation", "locale", "matches");
        row("nothing is everywhere", u""_s, u"a"_s, u"b"_s, u"en"_s, true);
        row("only in the translation", u"light"_s, u"燈塔"_s, u"LIGHTHOUSE"_s, u"en"_s, true);
        row("not across the two texts", u"ab"_s, u"a"_s, u"b"_s, u"en"_s, false);
        row("blanks count", u"a "_s, u"a"_s, u"b"_s, u"en"_s, false);
        row("accents count", u"uber"_s, u"über"_s, u""_s, u"en"_s, false);
        row("an accent encoded another way", u"U\u0308ber"_s, u"über"_s, u""_s, u"en"_s, true);
        row("a sharp s is two", u"STRASSE"_s, u"Straße"_s, u""_s, u"en"_s, true);
        row("an I that is no i in Turkish", u"ı"_s, u"KAPI"_s, u""_s, u"tr"_s, true);
        row("and none elsewhere", u"ı"_s, u"KAPI"_s, u""_s, u"en"_s, false);
        row("half of a surrogate pair", QString(QChar(0xD83D)), u"a"_s, u"b"_s, u"en"_s, false);
    }
    void matching()
    {
        const auto [search, original, translation, locale] = fetched<QString, QString, QString, QString>();
        const HistorySearch tested(search, QLocale(locale));
        QTEST(tested.matches(entry(original, translation)), "matches");
    }

    void ranges_data()
    {
        const auto row = columns<QString, QString, QStringList>("search", "text", "found");
        row("several, without overlaps", u"aa"_s, u"AAaa a"_s, {u"AA"_s, u"aa"_s});
        row("folding changes lengths before it", u"weg"_s, u"e\u0301e\u0301e\u0301 Weg"_s, {u"Weg"_s});
        row("an accent by itself belongs to its letter", u"é"_s, u"cafe\u0301s"_s, {u"e\u0301"_s});
        row("across lines", u"a\nb"_s, u"xA\nBx"_s, {u"A\nB"_s});
        row("half of a letter", u"s w"_s, u"Groß weg"_s, {u"ß w"_s});
        row("nowhere", u"z"_s, u"abc"_s, {});
    }
    void ranges()
    {
        const auto [search, text] = fetched<QString, QString>();
        QStringList found;
        const auto ranges = HistorySearch(search, QLocale(QLocale::English)).rangesIn(text);
        for (const TextRange &range : ranges)
            found.append(text.sliced(range.start, range.length));
        QTEST(found, "found");
    }

    void separatedFormats_data()
    {
        const auto row = columns<QString, QByteArray, QByteArray>("original", "csv", "tsv");
        row("plain", u"燈塔"_s, "燈塔", "燈塔");
        for (const char *other : {"a,b", "a;=1", "a\t=1", "a|b"}) // another separator for some programs
            row(other, QString::fromLatin1(other), '"' + QByteArray(other) + '"', '"' + QByteArray(other) + '"');
        row("quotes", u"a \"b\""_s, "\"a \"\"b\"\"\"", "\"a \"\"b\"\"\"");
        row("lines", u"a\nb"_s, "\"a\nb\"", "\"a\nb\"");
        row("nothing", QString(), "", "");
        for (const char *formula : {"=1+1", "+1", "-1", "@a"})
            row(formula, QString::fromLatin1(formula), "'" + QByteArray(formula), "'" + QByteArray(formula));
        row("a formula behind a tab", u"\t=1"_s, "\"'\t=1\"", "\"'\t=1\"");
        row("a formula behind a carriage return", u"\r=1"_s, "\"'\r=1\"", "\"'\r=1\"");
        row("markup", u"<img src=\"a\"> &lt;"_s, "\"<img src=\"\"a\"\"> &lt;\"",
            "\"&lt;img src=\"\"a\"\"&gt; &amp;lt;\"");
    }
    void separatedFormats()
    {
        const auto [original, csv, tsv] = fetched<QString, QByteArray, QByteArray>();
        const QList<HistoryItem> items{entry(original, u"x"_s)};
        QCOMPARE(exportedHistory(items, ExportFormat::Csv),
                 "timestamp,original,translation,starred\r\n2001-01-02T00:00:00Z," + csv + ",x,false\r\n");
        QCOMPARE(exportedHistory(items, ExportFormat::Tsv), tsv + "\tx\n");
        QVERIFY(
            exportedHistory(items, ExportFormat::Lines).contains(QString(original).replace(u'"', u"\"\""_s).toUtf8()));
    }

    void datesAndFormats()
    {
        QVERIFY(!exportFormat(u"xls"_s));
        HistoryItem exported = entry(u"a"_s, u"b"_s);
        for (const auto &[seconds, date] : {std::pair(-0.75, "2000-12-31T23:59:59Z"), // before the reference date
                                            std::pair(1e300, "9999-12-30T23:59:59Z"), // beyond all calendars
                                            std::pair(-1e300, "0001-01-02T00:00:00Z")}) {
            exported.timestamp = HistoryItem::Timestamp(seconds);
            QVERIFY(exportedHistory({exported}, ExportFormat::Csv).contains(date));
            QVERIFY(exportedHistory({exported}, ExportFormat::Json).contains(date));
        }
    }
};

static const TestClass<HistorySearchTest> historySearchTest;
#include "HistorySearchTest.moc"
