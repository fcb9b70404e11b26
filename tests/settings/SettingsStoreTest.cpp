#include "SettingsStore.h"
#include "Columns.h"
#include "Files.h"
#include "Settings.h"
#include "TestProgram.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <memory>
#include <thread>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

int modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? int(status.st_mode & 0777) : -1;
}

void writeNumberedKeys(SettingsStore &store, const QString &prefix)
{
    for (int i = 0; i < 20; ++i)
        store.setValue(prefix + QString::number(i), i);
}

} // namespace

class SettingsStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"preferences.json"_s);
        m_lines.clear();
    }

    void storedValuesAreReadByType_data()
    {
        columns<QByteArray, ClickGesture, double, double, bool, QString>("file", "clickGesture", "opacity",
                                                                         "sizeInForm", "follows", "target");
        const auto row = [](const char *name, const char *value) -> QTestData & {
            QByteArray file = "{";
            for (const char *key : {"translationClickGesture", "glassOpacity", "fontSize",
                                    "targetLanguageFollowsInterface", "targetLanguageCode"})
                file += (file.size() > 1 ? ",\"" : "\"") + QByteArray(key) + "\":" + value;
            return QTest::newRow(name) << (*value ? file + '}' : "{}"_ba);
        };
        row("absent: the defaults", "") << ClickGesture::DoubleClick << 0.75 << 20.0 << true << u"zh-Hant"_s;
        row("a whole number", "3") << ClickGesture::DoubleClick << 3.0 << 3.0 << false << u"zh-Hant"_s;
        row("a whole number written as a fraction", "3.0")
            << ClickGesture::DoubleClick << 3.0 << 3.0 << false << u"zh-Hant"_s;
        row("zero is no opacity", "0") << ClickGesture::SingleClick << 0.75 << 0.0 << false << u"zh-Hant"_s;
        row("a fraction is no whole number", "0.5") << ClickGesture::SingleClick << 0.5 << 0.5 << false << u"zh-Hant"_s;
        row("true is no number", "true") << ClickGesture::SingleClick << 0.75 << 0.0 << true << u"zh-Hant"_s;
        row("a text is no number", "\"1\"") << ClickGesture::SingleClick << 0.75 << 0.0 << false << u"1"_s;
        row("an empty text is a text", "\"\"") << ClickGesture::SingleClick << 0.75 << 0.0 << false << u""_s;
        row("null", "null") << ClickGesture::SingleClick << 0.75 << 0.0 << false << u"zh-Hant"_s;
    }

    void storedValuesAreReadByType()
    {
        QFETCH(QByteArray, file);
        writeFile(m_path, file);
        const SettingsStore store = makeStore();
        QTEST(store.read(settings::translationClickGesture), "clickGesture");
        QTEST(store.read(settings::glassOpacity), "opacity");
        QTEST(store.read(settings::fontSizeInForm), "sizeInForm");
        QTEST(store.read(settings::targetLanguageFollowsInterface), "follows");
        QTEST(store.read(settings::targetLanguageCode), "target");
        QCOMPARE(store.contains(settings::glassOpacity), file != "{}");
    }

    void othersKeysSurvive()
    {
        writeFile(m_path, R"({"future": {"list": [1, "二", null]}, "autoCopy": true, "autoHide": true})");
        SettingsStore store = makeStore();
        const QJsonObject before = stored(store);
        store.write(settings::autoCopy, false);
        store.remove(settings::autoHide);
        store.remove(u"never there"_s);
        QJsonObject expected = before;
        expected[u"autoCopy"_s] = false;
        expected.remove(u"autoHide"_s);
        QCOMPARE(stored(store), expected);
    }

    void anotherStoreSeesEveryChange()
    {
        SettingsStore here = makeStore();
        SettingsStore there = makeStore();
        for (qint64 i = 0; i < 20; ++i) {
            SettingsStore &writer = i % 2 ? here : there;
            writer.write(settings::hotkeyCode, i);
            QCOMPARE(writer.read(settings::hotkeyCode), i); // without waiting
            writer.flush();
            QCOMPARE((i % 2 ? there : here).read(settings::hotkeyCode), i);
        }
        const qint64 large = (qint64(1) << 62) + 1;
        here.write(settings::hotkeyModifiers, large);
        here.write(settings::glassOpacity, 0.1);
        here.remove(settings::hotkeyCode);
        QVERIFY(!here.contains(settings::hotkeyCode));
        here.flush();
        QVERIFY(!there.contains(settings::hotkeyCode));
        QCOMPARE(there.read(settings::hotkeyModifiers), large);
        QCOMPARE(there.read(settings::glassOpacity), 0.1);
        there.write(settings::hotkeyCode, 40); // what was removed here may come back from there
        there.flush();
        QCOMPARE(here.read(settings::hotkeyCode), 40);
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(here.read(settings::hotkeyCode), settings::hotkeyCode.defaultValue);
    }

    void processesDoNotLoseEachOthersKeys()
    {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (const QString &prefix : {u"a"_s, u"b"_s}) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(QCoreApplication::applicationFilePath(),
                                    {u"SettingsStoreTest"_s, u"--write"_s, m_path, prefix});
        }
        SettingsStore store = makeStore();
        writeNumberedKeys(store, u"c"_s);
        for (const auto &process : processes) {
            QVERIFY(process->waitForFinished());
            QCOMPARE(process->exitCode(), 0);
        }
        QCOMPARE(m_lines, QStringList());
        QCOMPARE(stored(store).size(), 60);
    }

    void threadsShareOneStore()
    {
        SettingsStore store = makeStore();
        std::atomic<int> wrong = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&, i] {
                const Setting<bool> own = settings::consentKey(i + 1);
                for (int round = 0; round < 20; ++round) {
                    store.write(own, round % 2 == 0);
                    if (store.read(own) != (round % 2 == 0) || store.read(settings::showInDock) != true)
                        ++wrong;
                }
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
    }

    void aBrokenFileIsKeptAside()
    {
        for (const QByteArray &content : {"{\"autoCopy\": true, \"geminiApiKey\": \"secret"_ba, R"(["secret"])"_ba,
                                          ""_ba, "{\"secret\": \"\xff\"}"_ba, R"({"autoCopy": true} secret)"_ba}) {
            init();
            writeFile(m_path, content);
            SettingsStore store = makeStore();
            QCOMPARE(store.read(settings::autoCopy), false);
            const QStringList aside =
                QDir(m_folder->path()).entryList({u"preferences.unreadable-*.json"_s}, QDir::Files);
            QCOMPARE(aside.size(), 1);
            QCOMPARE(contentOf(m_folder->filePath(aside.first())), content);
            QCOMPARE(modeOf(m_folder->filePath(aside.first())), 0600);
            QCOMPARE(m_lines.size(), 1);
            QVERIFY(m_lines.first().contains(aside.first()));
            QVERIFY(!m_lines.first().contains(u"secret"_s));
            store.write(settings::autoHide, true);
            QCOMPARE(stored(store), (QJsonObject{{u"autoHide"_s, true}}));
        }
    }

    void aFileBrokenMeanwhileCostsNoValue()
    {
        SettingsStore store = makeStore();
        store.write(settings::openAIModel, u"mine"_s);
        store.flush();
        writeFile(m_path, "{\"half written by an edi");
        QCOMPARE(store.read(settings::openAIModel), u"mine"_s);
        QVERIFY(m_lines.isEmpty());
        store.write(settings::autoHide, true);
        QCOMPARE(stored(store), (QJsonObject{{u"autoHide"_s, true}, {u"openAIModel"_s, u"mine"_s}}));
        QCOMPARE(QDir(m_folder->path()).entryList({u"preferences.unreadable-*.json"_s}).size(), 1);
    }

    void onlyTheOwnerMayRead()
    {
        m_path = m_folder->filePath(u"config/lucentra/preferences.json"_s);
        SettingsStore store = makeStore();
        store.write(settings::autoCopy, true);
        store.flush();
        QCOMPARE(modeOf(m_path), 0600);
        QCOMPARE(modeOf(m_folder->filePath(u"config/lucentra"_s)), 0700);
        QVERIFY(
            QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther));
        store.write(settings::autoCopy, false);
        store.flush();
        QCOMPARE(modeOf(m_path), 0600);
        QCOMPARE(QDir(m_folder->filePath(u"config/lucentra"_s)).entryList(QDir::Files),
                 QStringList{u"preferences.json"_s});
    }

    void anUnusablePlaceHoldsNobody()
    {
        // A file in the folder's place, and what is no file in the file's.
        for (const QString &path : {u"file/preferences.json"_s, u"folder"_s, u"pipe"_s, u"link"_s}) {
            init();
            writeFile(m_folder->filePath(u"file"_s), "x");
            QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
            QCOMPARE(::mkfifo(QFile::encodeName(m_folder->filePath(u"pipe"_s)).constData(), 0600), 0);
            QVERIFY(QFile::link(m_folder->filePath(u"nowhere/file"_s), m_folder->filePath(u"link"_s)));
            m_path = m_folder->filePath(path);
            SettingsStore store = makeStore();
            QCOMPARE(store.read(settings::showInDock), true);
            store.write(settings::showInDock, false);
            store.write(settings::autoCopy, true);
            store.flush();
            QCOMPARE(store.read(settings::showInDock), false);
            QCOMPARE(m_lines.size(), 1);
            QVERIFY(m_lines.first().contains(m_path));

            const QString blocker = m_folder->filePath(path.section(u'/', 0, 0));
            QVERIFY(QFile::rename(blocker, m_folder->filePath(u"moved away"_s)));
            store.remove(settings::autoCopy);
            QCOMPARE(stored(store), (QJsonObject{{u"showInDock"_s, false}}));
        }
    }

    void overridesStayInFrontAndOffTheFile()
    {
        SettingsStore store = makeStore();
        store.write(settings::translationEngine, 4);
        store.overrideForThisProcess(settings::translationEngine, 7);
        store.overrideForThisProcess(settings::targetLanguageCode, u"ja"_s);
        store.write(settings::translationEngine, 5);
        store.remove(settings::targetLanguageCode);
        QCOMPARE(store.read(settings::translationEngine), 7);
        QCOMPARE(store.read(settings::targetLanguageCode), u"ja"_s);
        QVERIFY(store.contains(settings::targetLanguageCode));
        QCOMPARE(stored(store), (QJsonObject{{u"translationEngine"_s, 5}}));
        QCOMPARE(makeStore().read(settings::translationEngine), 5);
    }

    void observersHearOfChangesAlone()
    {
        SettingsStore store = makeStore();
        store.followFile();
        QStringList seen;
        auto first = std::make_unique<QObject>();
        store.observe(notifications::targetLanguageChanged, first.get(), [&](const QString &code) {
            seen.append(u"first "_s + code);
            first.reset(); // during the announcement
        });
        store.observe(settings::targetLanguageCode, this, [&](const QString &code) { seen.append(code); });
        const auto cleanUp = qScopeGuard([&] { store.disconnect(this); });
        store.write(settings::autoHide, true);
        store.write(settings::targetLanguageCode, u"ja"_s);
        store.write(settings::targetLanguageCode, u"ja"_s);
        QCOMPARE(seen, (QStringList{u"first ja"_s, u"ja"_s}));
        store.flush();
        seen.clear();
        makeStore().write(settings::targetLanguageCode, u"ko"_s); // another process
        QTRY_COMPARE(seen, QStringList{u"ko"_s});
        QVERIFY(QFile::remove(m_path));
        QTRY_COMPARE(seen, (QStringList{u"ko"_s, u"zh-Hant"_s}));
    }

    void consentHasKeysForRemoteEnginesAlone()
    {
        SettingsStore store = makeStore();
        for (const qint64 engine : {0, 1, 7, 8, -1}) {
            const Setting<bool> consent = settings::consentKey(engine);
            QVERIFY(!store.read(consent));
            store.write(consent, true);
            QCOMPARE(store.read(consent), engine == 1 || engine == 7);
        }
        QCOMPARE(stored(store).keys(),
                 (QStringList{u"privacy.remoteTranslation.v1.engine.1"_s, u"privacy.remoteTranslation.v1.engine.7"_s}));
    }

private:
    /// Its lines come one at a time: a store's writer is the only thread here that has any.
    SettingsStore makeStore()
    {
        return SettingsStore(m_path, [this](const QString &line) { m_lines.append(line); });
    }
    /// The file's content once the store has written it.
    QJsonObject stored(SettingsStore &store) const
    {
        store.flush();
        return QJsonDocument::fromJson(contentOf(m_path)).object();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    QStringList m_lines;
};

/// With `--write <file> <prefix>` the program is another process that writes settings.
static int runOrWrite(int argc, char **argv)
{
    if (argc != 4 || qstrcmp(argv[1], "--write") != 0)
        return runTests<SettingsStoreTest>(argc, argv);
    QCoreApplication application(argc, argv);
    bool hasFailed = false;
    SettingsStore store(QString::fromLocal8Bit(argv[2]), [&](const QString &) { hasFailed = true; });
    writeNumberedKeys(store, QString::fromLocal8Bit(argv[3]));
    return hasFailed ? 1 : 0;
}

static const TestClass<SettingsStoreTest> settingsStoreTest(runOrWrite);
#include "SettingsStoreTest.moc"
