#include "AutostartEntry.h"
#include "Columns.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

class AutostartEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<Fixture>(); }

    void whatIsInForce_data()
    {
        // own: null: there is no such file
        columns<QByteArray, QByteArray, bool>("own", "system", "enabled");
        const QByteArray plain = "[Desktop Entry]\nType=Application\nExec=true\n";
        QTest::newRow("nothing") << QByteArray() << QByteArray() << false;
        QTest::newRow("an entry of any content") << plain << QByteArray() << true;
        QTest::newRow("a program that is gone")
            << QByteArray("[Desktop Entry]\nType=Application\nExec=\"/opt/\\\\$a/b\"\n") << QByteArray() << false;
        QTest::newRow("hidden") << plain + "Hidden=true\n" << QByteArray() << false;
        QTest::newRow("disabled by the session's settings") << plain + "X-GNOME-Autostart-enabled = false\n"
                                                            << QByteArray() << false;
        QTest::newRow("the same words in another group") << plain + "[Desktop Action x]\nHidden=true\n"
                                                         << QByteArray() << true;
        QTest::newRow("the whole system's") << QByteArray() << plain << true;
        QTest::newRow("the whole system's, hidden by the user")
            << QByteArray("[Desktop Entry]\nHidden=true\n") << plain << false;
    }
    void whatIsInForce()
    {
        QFETCH(QByteArray, own);
        QFETCH(QByteArray, system);
        if (!own.isNull())
            Fixture::put(m->own, own);
        if (!system.isNull())
            Fixture::put(m->system, system);
        QFETCH(bool, enabled);
        AutostartEntry entry = m->entry();
        QCOMPARE(entry.isEnabled(), enabled);
        QVERIFY(entry.setEnabled(!enabled));
        QCOMPARE(entry.isEnabled(), !enabled);
        QCOMPARE(QFileInfo::exists(m->system), !system.isNull()); // it is overruled, not removed
        QVERIFY(entry.setEnabled(enabled));
        QCOMPARE(entry.isEnabled(), enabled);
    }

    void thePathIsQuoted()
    {
        const QString program = m->folder.filePath(u"a b $x`\"\\l"_s);
        QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), program));
        AutostartEntry entry = m->entry(program);
        QVERIFY(entry.setEnabled(true));
        QVERIFY2(entry.isEnabled() && m->content().contains(u"/a b \\\\$x\\\\`\\\\\"\\\\\\\\l\""_s),
                 qPrintable(m->content()));
        QVERIFY(entry.setEnabled(false) && !QFileInfo::exists(m->own));
        QVERIFY(m->entry(u"/opt/100%/lucentra"_s).setEnabled(true));
        QVERIFY2(m->content().contains(u"Exec=\"/opt/100%%/lucentra\""_s), qPrintable(m->content()));
    }

    void aFolderThatCannotBeMadeIsAFailure()
    {
        Fixture::put(m->folder.filePath(u"config"_s), "a file in its place");
        const auto failed = m->entry().setEnabled(true);
        QVERIFY(!failed);
        QVERIFY(failed.error().description.contains(u"autostart"_s));
    }

private:
    struct Fixture
    {
        QTemporaryDir folder;
        QString own = folder.filePath(u"config/autostart/com.tarnby.lucentra.desktop"_s);
        QString system = folder.filePath(u"xdg/autostart/com.tarnby.lucentra.desktop"_s);

        AutostartEntry entry(const QString &executable = QCoreApplication::applicationFilePath()) const
        {
            return {folder.filePath(u"config"_s), {folder.filePath(u"xdg"_s)}, executable};
        }
        static void put(const QString &path, const QByteArray &content)
        {
            QDir().mkpath(QFileInfo(path).path());
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        QString content() const
        {
            QFile file(own);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        }
    };
    std::unique_ptr<Fixture> m;
};

static const TestClass<AutostartEntryTest> autostartEntryTest;
#include "AutostartEntryTest.moc"
