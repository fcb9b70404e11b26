#include "AutostartEntry.h"
#include "Columns.h"
#include "Files.h"
#include "TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

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
        const auto row = columns<QByteArray, QByteArray, bool>("own", "system", "enabled");
        const QByteArray plain = "[Desktop Entry]\nType=Application\nExec=true\n";
        row("nothing", {}, {}, false);
        row("an entry of any content", plain, {}, true);
        row("a program that is gone", "[Desktop Entry]\nType=Application\nExec=\"/opt/\\\\$a/b\"\n", {}, false);
        row("hidden", plain + "Hidden=true\n", {}, false);
        row("disabled by the session's settings", plain + "X-GNOME-Autostart-enabled = false\n", {}, false);
        row("the same words in another group", plain + "[Desktop Action x]\nHidden=true\n", {}, true);
        row("the whole system's", {}, plain, true);
        row("the whole system's, hidden by the user", "[Desktop Entry]\nHidden=true\n", plain, false);
    }
    void whatIsInForce()
    {
        const auto [own, system, enabled] = fetched<QByteArray, QByteArray, bool>();
        if (!own.isNull())
            writeFile(m->own, own);
        if (!system.isNull())
            writeFile(m->system, system);
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
        writeFile(m->folder.filePath(u"config"_s), "a file in its place");
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
        QString content() const { return QString::fromUtf8(contentOf(own)); }
    };
    std::unique_ptr<Fixture> m;
};

static const TestClass<AutostartEntryTest> autostartEntryTest;
#include "AutostartEntryTest.moc"
