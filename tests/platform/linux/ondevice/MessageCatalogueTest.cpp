#include "MessageCatalogue.h"
#include "CatalogueBytes.h"
#include "Columns.h"
#include "TestProgram.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

using Reader = bool (*)(QByteArrayView, const MessageVisitor &);

/// "source=translation" of every message, or "no catalogue".
QStringList read(Reader reader, const QByteArray &bytes)
{
    QStringList messages;
    // A copy of exactly this size, so that a byte read beyond it is noticed.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    const bool isRead = reader(QByteArrayView(exact.data(), qsizetype(exact.size())),
                               [&](QByteArrayView source, const QString &translation) {
                                   messages.append(QString::fromUtf8(source) + u'=' + translation);
                               });
    return isRead ? messages : QStringList{u"no catalogue"_s};
}

/// The bytes with a little-endian word replaced.
QByteArray patched(QByteArray bytes, qsizetype at, quint32 value)
{
    value = qToLittleEndian(value);
    return bytes.replace(at, 4, reinterpret_cast<const char *>(&value), 4);
}

} // namespace

class MessageCatalogueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void moFiles_data()
    {
        columns<QByteArray, QStringList>("bytes", "messages");
        const Messages two{{"Cancel", "取消"}, {"_Open", "開啟(_O)"}};
        const QStringList both{u"Cancel=取消"_s, u"_Open=開啟(_O)"_s};
        const QByteArray good = moBytes(two);
        QTest::newRow("little-endian") << good << both;
        QTest::newRow("big-endian") << moBytes(two, true) << both;
        QTest::newRow("a context before the source")
            << moBytes({{"menu\x04Open", "開啟"}}) << QStringList{u"Open=開啟"_s};
        QTest::newRow("plural forms: the first and the last")
            << moBytes({{"%d file"_ba + '\0' + "%d files", "%d soubor"_ba + '\0' + "%d soubory" + '\0' + "%d souborů"}})
            << QStringList{u"%d file=%d soubor"_s, u"%d files=%d souborů"_s};
        QTest::newRow("one plural form for both sources")
            << moBytes({{QByteArray("%d file\0%d files", 16), "%d 個檔案"}})
            << QStringList{u"%d file=%d 個檔案"_s, u"%d files=%d 個檔案"_s};
        QTest::newRow("another character set")
            << moBytes({{"Cancel", "\xbc\xe8\xa4\xea\xbe\xc3\xa4\xb7"}, {"Open", "\xb3\xab\xff"}}, false, "EUC-JP")
            << QStringList{u"Cancel=取り消し"_s};
        QTest::newRow("a character set that nobody knows")
            << moBytes(two, false, "x-lighthouse") << QStringList{u"no catalogue"_s};
        QTest::newRow("a translation that isn't UTF-8")
            << moBytes({{"Cancel", "\xc3\x28"}, {"Open", "開"}}) << QStringList{u"Open=開"_s};
        QTest::newRow("untranslated") << moBytes({{"Cancel", ""}}) << QStringList();
        QTest::newRow("nothing at all") << QByteArray() << QStringList{u"no catalogue"_s};
        QTest::newRow("a string that reaches outside") << patched(good, 28 + 8, 0xffffffff) << QStringList{both[1]};
    }
    void moFiles()
    {
        QFETCH(QByteArray, bytes);
        QTEST(read(readMoCatalogue, bytes), "messages");
    }

    void qmFiles_data()
    {
        columns<QByteArray, QStringList>("bytes", "messages");
        const QByteArray good = qmBytes({{"Cancel", "取消"}, {"&Open", "開啟(&O)"}});
        const QStringList both{u"Cancel=取消"_s, u"&Open=開啟(&O)"_s};
        QTest::newRow("two messages") << good << both;
        QTest::newRow("cut off in the second") << good.first(good.size() - 30) << QStringList();
        QTest::newRow("without sources") << qmBytes({{"", "取消"}}) << QStringList();
        QTest::newRow("another file") << QByteArray("PNG") << QStringList{u"no catalogue"_s};
        QByteArray strange = good;
        strange[16 + 13 + 5] = '\x55';
        QTest::newRow("an unknown field") << strange << QStringList();
    }
    void qmFiles()
    {
        QFETCH(QByteArray, bytes);
        QTEST(read(readQmCatalogue, bytes), "messages");
    }
};

static const TestClass<MessageCatalogueTest> messageCatalogueTest;
#include "MessageCatalogueTest.moc"
