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
        const auto row = columns<QByteArray, QStringList>("bytes", "messages");
        const Messages two{{"Cancel", "取消"}, {"_Open", "開啟(_O)"}};
        const QStringList both{u"Cancel=取消"_s, u"_Open=開啟(_O)"_s};
        const QByteArray good = moBytes(two);
        row("little-endian", good, both);
        row("big-endian", moBytes(two, true), both);
        row("a context before the source", moBytes({{"menu\x04Open", "開啟"}}), {u"Open=開啟"_s});
        row("plural forms: the first and the last",
            moBytes({{"%d file"_ba + '\0' + "%d files", "%d soubor"_ba + '\0' + "%d soubory" + '\0' + "%d souborů"}}),
            {u"%d file=%d soubor"_s, u"%d files=%d souborů"_s});
        row("one plural form for both sources", moBytes({{QByteArray("%d file\0%d files", 16), "%d 個檔案"}}),
            {u"%d file=%d 個檔案"_s, u"%d files=%d 個檔案"_s});
        row("another character set",
            moBytes({{"Cancel", "\xbc\xe8\xa4\xea\xbe\xc3\xa4\xb7"}, {"Open", "\xb3\xab\xff"}}, false, "EUC-JP"),
            {u"Cancel=取り消し"_s});
        row("a character set that nobody knows", moBytes(two, false, "x-lighthouse"), {u"no catalogue"_s});
        row("a translation that isn't UTF-8", moBytes({{"Cancel", "\xc3\x28"}, {"Open", "開"}}), {u"Open=開"_s});
        row("untranslated", moBytes({{"Cancel", ""}}), {});
        row("nothing at all", {}, {u"no catalogue"_s});
        row("a string that reaches outside", patched(good, 28 + 8, 0xffffffff), {both[1]});
    }
    void moFiles()
    {
        QFETCH(QByteArray, bytes);
        QTEST(read(readMoCatalogue, bytes), "messages");
    }

    void qmFiles_data()
    {
        const auto row = columns<QByteArray, QStringList>("bytes", "messages");
        const QByteArray good = qmBytes({{"Cancel", "取消"}, {"&Open", "開啟(&O)"}});
        const QStringList both{u"Cancel=取消"_s, u"&Open=開啟(&O)"_s};
        row("two messages", good, both);
        row("cut off in the second", good.first(good.size() - 30), {});
        row("without sources", qmBytes({{"", "取消"}}), {});
        row("another file", "PNG", {u"no catalogue"_s});
        QByteArray strange = good;
        strange[16 + 13 + 5] = '\x55';
        row("an unknown field", strange, {});
    }
    void qmFiles()
    {
        QFETCH(QByteArray, bytes);
        QTEST(read(readQmCatalogue, bytes), "messages");
    }
};

static const TestClass<MessageCatalogueTest> messageCatalogueTest;
#include "MessageCatalogueTest.moc"
