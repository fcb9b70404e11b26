#include "LegacyMigration.h"
#include "TestProgram.h"

#include "Columns.h"
#include "Files.h"
#include "PropertyList.h"
#include "SettingsStore.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr auto preferences = "home/Library/Preferences/com.tarnby.Panewise.plist";
constexpr auto containerPreferences =
    "home/Library/Containers/com.tarnby.Panewise/Data/Library/Preferences/com.tarnby.Panewise.plist";
constexpr auto support = "home/Library/Application Support/";
constexpr auto containerSupport = "home/Library/Containers/com.tarnby.Panewise/Data/Library/Application Support/";

QByteArray xmlList(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body + "</dict></plist>\n";
}

/// A binary list of the objects, the first of which is the top. References have one byte.
QByteArray binaryList(const QList<QByteArray> &objects)
{
    QByteArray file = "bplist00";
    QByteArray table;
    for (const QByteArray &object : objects) {
        table += char(file.size() >> 8);
        table += char(file.size());
        file += object;
    }
    const auto number = [](qsizetype value) { return QByteArray(6, 0) + char(value >> 8) + char(value); };
    const qsizetype tableOffset = file.size();
    return file + table + QByteArray(6, 0) + char(2) + char(1) + number(objects.size()) + number(0) +
           number(tableOffset);
}

QByteArray binaryText(const QByteArray &text)
{
    return char(0x50 + text.size()) + text;
}

} // namespace

class LegacyMigrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<Fixture>(); }
    void historyComesFromTheFirstSourceThatHasOne_data()
    {
        // files: folders of files that hold their own name
        const auto row = columns<QStringList, QString>("files", "expected");
        const QString home = QString::fromUtf8(support);
        const QString container = QString::fromUtf8(containerSupport);
        row("no source", {}, {});
        row("own name before the former one", {home + u"Panewise"_s, home + u"Lucentra"_s}, home + u"Lucentra"_s);
        row("the home folder before the container", {container + u"Lucentra"_s, home + u"Panewise"_s},
            home + u"Panewise"_s);
        row("the container alone", {container + u"Panewise"_s}, container + u"Panewise"_s);
        row("this desktop's former version", {u"data/Panewise"_s}, u"data/Panewise"_s);
        row("there is one already", {u"data/Lucentra"_s, home + u"Lucentra"_s}, u"data/Lucentra"_s);
    }

    void historyComesFromTheFirstSourceThatHasOne()
    {
        const auto [files, expected] = fetched<QStringList, QString>();
        for (const QString &folder : files)
            m->put((folder + u"/history.json"_s).toUtf8().constData(), folder.toUtf8());
        m->migrate();
        QCOMPARE(QString::fromUtf8(m->copied()), expected);
        if (expected.startsWith(u"home"_s))
            QCOMPARE(QFileInfo(m->history()).permissions() & 0x0FF, QFileDevice::Permissions());
    }

    void aHistoryThatCannotBeCopiedIsALine()
    {
        // A pipe and a folder are not files; a file that is too large is one, and is logged.
        QDir().mkpath(m->path("home/Library/Application Support/Lucentra/history.json"));
        QDir().mkpath(m->path("home/Library/Application Support/Panewise"));
        const QString pipe = m->path("home/Library/Application Support/Panewise/history.json");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        m->put("home/Library/Containers/com.tarnby.Panewise/Data/Library/Application Support/Lucentra/history.json",
               "");
        QFile huge(m->path("home/Library/Containers/com.tarnby.Panewise/Data/Library/Application Support/Lucentra/"
                           "history.json"));
        QVERIFY(huge.resize(qint64(1) << 40));
        m->put("data/Panewise/history.json", "[3]");
        m->migrate();
        QCOMPARE(m->copied(), "[3]");
        QCOMPARE(m->log, QStringList{u"Local data migration skipped history source "_s + huge.fileName() +
                                     u": the file is too large"_s});
    }

    void preferencesAreCopiedWhereTheyAreMissing()
    {
        m->put(preferences, xmlList("<key>appLanguage</key><string>ja</string>"
                                    "<key>autoHide</key><true/><key>openAIApiKey</key><string>secret</string>"
                                    "<key>unknown</key><true/>"));
        m->put(containerPreferences, xmlList("<key>appLanguage</key><string>ko</string>"
                                             "<key>triggerMode</key><integer>1</integer>"
                                             "<key>privacy.remoteTranslation.v1.engine.4</key><true/>"));
        m->put("config/com.tarnby.Panewise/preferences.json", R"({"triggerMode": 0, "fontSize": 30})");
        m->settings.setValue(u"autoHide"_s, false);
        m->migrate();
        m->put(preferences, xmlList("<key>appLanguage</key><string>en</string><key>autoCopy</key><true/>"));
        m->migrate();
        const QJsonObject expected{{u"appLanguage"_s, u"ja"_s}, {u"autoHide"_s, false},
                                   {u"triggerMode"_s, 1},       {u"privacy.remoteTranslation.v1.engine.4"_s, true},
                                   {u"fontSize"_s, 30},         {u"autoCopy"_s, true}};
        QCOMPARE(m->stored(), expected);
    }

    void bothFormsAndEveryKindOfValueAreRead()
    {
        QCOMPARE(
            readPropertyList(xmlList("<key>a</key><string>⌥T &amp; more</string><key>b</key><integer>-3</integer>"
                                     "<key>c</key><real>0.5</real><key>d</key><false/>"
                                     "<key>e</key><array><string>x</string></array><key>f</key><data>AAAA</data>")),
            (QJsonObject{{u"a"_s, u"⌥T & more"_s}, {u"b"_s, -3}, {u"c"_s, 0.5}, {u"d"_s, false}}));
        QCOMPARE(
            readPropertyList(binaryList({QByteArray("\xD3\x01\x02\x03\x04\x05\x06", 7), binaryText("a"),
                                         binaryText("b"), binaryText("c"), QByteArray("\x62\x23\x25\x00\x54", 5), // ⌥T
                                         QByteArray("\x12\x00\x08\x00\x00", 5), QByteArray("\x09")})),
            (QJsonObject{{u"a"_s, u"⌥T"_s}, {u"b"_s, 0x80000}, {u"c"_s, true}}));
        // An array that contains itself.
        QCOMPARE(readPropertyList(
                     binaryList({QByteArray("\xD1\x01\x02", 3), binaryText("fontSize"), QByteArray("\xA1\x02")})),
                 QJsonObject{});
        QCOMPARE(readPropertyList(binaryList({binaryText("a")})), QJsonObject{}); // no dictionary at the top
    }

    void hostileFilesCostNothing()
    {
        const QByteArray large = xmlList("<key>fontSize</key><real>40</real>");
        for (const QByteArray &content :
             {xmlList("<key>fontSize</key><real>1").chopped(20),
              xmlList("<key>fontSize</key>" + QByteArray("<array>").repeated(100000)), large, QByteArray()}) {
            m = std::make_unique<Fixture>();
            m->put(preferences, content);
            if (content == large)
                QVERIFY(QFile::resize(m->path(preferences), qint64(1) << 40));
            if (content.isEmpty()) { // a pipe
                QVERIFY(QFile::remove(m->path(preferences)));
                QCOMPARE(mkfifo(qPrintable(m->path(preferences)), 0600), 0);
            }
            m->put(containerPreferences, xmlList("<key>fontSize</key><real>30</real>"));
            QElapsedTimer clock;
            clock.start();
            m->migrate();
            QVERIFY(clock.elapsed() < 5000);
            QCOMPARE(m->settings.value(u"fontSize"_s), QJsonValue(30));
        }
    }

private:
    struct Fixture
    {
        QTemporaryDir folder;
        SettingsStore settings{folder.filePath(u"preferences.json"_s)};
        QStringList log;

        QString path(const char *name) const { return folder.filePath(QString::fromUtf8(name)); }
        QString history() const { return path("data/Lucentra/history.json"); }
        void put(const char *name, const QByteArray &content) const { writeFile(path(name), content); }
        QByteArray copied() const { return contentOf(history()); }
        QJsonObject stored()
        {
            settings.flush();
            return QJsonDocument::fromJson(contentOf(path("preferences.json"))).object();
        }
        void migrate()
        {
            migrateLegacyData(settings, history(),
                              {.home = path("home"), .configHome = path("config"), .dataHome = path("data")},
                              [this](const QString &line) { log.append(line); });
        }
    };
    std::unique_ptr<Fixture> m;
};

static const TestClass<LegacyMigrationTest> legacyMigrationTest;
#include "LegacyMigrationTest.moc"
