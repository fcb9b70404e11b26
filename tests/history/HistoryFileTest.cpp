#include "HistoryFile.h"
#include "Columns.h"
#include "Sanitized.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const auto sampleId = u"0F5BE2A1-3C4D-4E6F-8A9B-C0D1E2F3A4B5"_s;

const QByteArray sampleBytes(R"([{"id":"0F5BE2A1-3C4D-4E6F-8A9B-C0D1E2F3A4B5","isStarred":true,)"
                             R"("originalText":"第一行\n\"quoted\" \\ \u0001","timestamp":785432100.123456,)"
                             R"("translatedText":"👍 é"}])");

QByteArray object(const QByteArray &more)
{
    return R"([{"id":"0F5BE2A1-3C4D-4E6F-8A9B-C0D1E2F3A4B5","originalText":"a","translatedText":"b")" + more + "}]";
}

HistoryItem sample()
{
    return {.id = QUuid(sampleId),
            .originalText = u"第一行\n\"quoted\" \\ \u0001"_s,
            .translatedText = u"👍 é"_s,
            .timestamp = HistoryItem::Timestamp(785432100.123456),
            .isStarred = true};
}

} // namespace

class HistoryFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytes()
    {
        QCOMPARE(encodeHistory({sample()}), sampleBytes);
        QCOMPARE(encodeHistory({}), QByteArray("[]"));
    }

    void everyTextSurvives()
    {
        // The last one is half of a surrogate pair: a broken service may answer with one.
        for (const QString &text : {u"一\r\n二\u2028三"_s, u"a\0b"_s, u"👨‍👩‍👧🏽"_s, QString(u""_s),
                                    u"長"_s.repeated(100000), u"a"_s + QChar(0xD83D) + u'b'}) {
            const HistoryItem item = newHistoryItem(text, u"x"_s);
            const auto items = decodeHistory(encodeHistory({item}));
            QVERIFY(items);
            QCOMPARE(*items, QList<HistoryItem>{item}); // the time to its last bit, too
            QVERIFY(qAbs(dateOf(item.timestamp).msecsTo(QDateTime::currentDateTimeUtc())) < 5000);
        }
    }

    void decoding_data()
    {
        const auto row = columns<QByteArray, bool>("json", "readable");
        const QByteArray good = object(R"(,"timestamp":1.5,"isStarred":false)");
        row("empty list", "[]", true);
        row("all five", good, true);
        row("a whole number as the time", object(R"(,"timestamp":700000000,"isStarred":true)"), true);
        row("a further key", object(R"(,"timestamp":1,"isStarred":true,"note":{})"), true);
        row("small letters in the id", QByteArray(good).replace("0F5BE2A1", "0f5be2a1"), true);
        row("braces around the id", QByteArray(good).replace(sampleId.toLatin1(), "{" + sampleId.toLatin1() + "}"),
            false);
        row("no id at all", QByteArray(good).replace(sampleId.toLatin1(), "first"), false);
        row("isStarred is missing", object(R"(,"timestamp":1.5)"), false);
        row("isStarred is a number", object(R"(,"timestamp":1.5,"isStarred":0)"), false);
        row("the time is a string", object(R"(,"timestamp":"1.5","isStarred":false)"), false);
        row("a text is null", QByteArray(good).replace(R"("a")", "null"), false);
        row("an entry that is no object", good.chopped(1) + ",7]", false);
        row("an object outside", "{}", false);
        row("cut off", good.chopped(4), false);
        row("an empty file", {}, false);
        row("arrays without end", "[" + QByteArray("[0],").repeated(isSanitized ? 20'000 : 2'000'000) + "[]]", false);
        row("not UTF-8", QByteArray(good).replace(R"("a")", "\"\xe9\""), false);
    }
    void decoding()
    {
        QFETCH(QByteArray, json);
        const auto items = decodeHistory(json);
        QTEST(items.has_value(), "readable");
        if (!items)
            QVERIFY(!items.error().description.isEmpty() && !items.error().description.contains(sampleId));
    }

    void hugeFilesAreReadInPart_data()
    {
        const auto row = columns<QByteArray, QByteArray, bool>("start", "repeated", "readable");
        const QByteArray entry = object(R"(,"timestamp":1,"isStarred":false)").chopped(1).sliced(1);
        // Nearly all of what is read belongs to an entry that is cut off.
        const QByteArray texts = "[" + entry + "," + QByteArray(entry).replace("\"b\"", "\"b");
        row("entries", texts, "]},[{\\\"", true);
        row("no entries", "[", "[0],", false);
        row("nothing at all", {}, QByteArray(1, '\0'), false);
    }
    void hugeFilesAreReadInPart()
    {
        if (isSanitized)
            QSKIP("takes too long, and the sanitizer needs more memory than is allowed here");
        const auto [start, repeated] = fetched<QByteArray, QByteArray>();
        constexpr qint64 size = 160LL << 20;
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"history.json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(start) == start.size());
        for (const QByteArray block = repeated.repeated((1 << 20) / repeated.size()); file.pos() < size;)
            QVERIFY(file.write(block) == block.size());
        file.close();
        // Reading all of it would fail here rather than take all memory.
        rlimit before{};
        getrlimit(RLIMIT_DATA, &before);
        const rlimit small{.rlim_cur = 1 << 30, .rlim_max = before.rlim_max};
        setrlimit(RLIMIT_DATA, &small);
        const auto read = readHistoryFile(file.fileName());
        setrlimit(RLIMIT_DATA, &before);
        QTEST(read && read->items.size() == 1 && !read->isWhole, "readable");
    }

    void fullDiskKeepsTheOldFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"history.json"_s);
        QVERIFY(writeHistoryFile(path, {sample()}));
        // As on a full disk, the first part can be written and the rest can't.
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{.rlim_cur = 20000, .rlim_max = before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
        const auto written = writeHistoryFile(path, {newHistoryItem(u"x"_s.repeated(100000), u"y"_s)});
        // Or nothing at all, which is noticed late where it is so little that it waits in a buffer.
        const rlimit none{.rlim_cur = 0, .rlim_max = before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
        const auto writtenLittle = writeHistoryFile(path, {newHistoryItem(u"x"_s, u"y"_s)});
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(!written && !written.error().description.isEmpty());
        QVERIFY(!writtenLittle && !writtenLittle.error().description.isEmpty());
        QCOMPARE(readHistoryFile(path)->items, QList<HistoryItem>{sample()});
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"history.json"_s});
    }
};

static const TestClass<HistoryFileTest> historyFileTest;
#include "HistoryFileTest.moc"
