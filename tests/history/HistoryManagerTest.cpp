#include "HistoryManager.h"
#include "Columns.h"
#include "FileLock.h"
#include "Files.h"
#include "HistoryEntries.h"
#include "HistoryFile.h"
#include "MainQueue.h"
#include "PrivateFile.h"
#include "Sanitized.h"
#include "TestProgram.h"

#include <QRandomGenerator>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <memory>
#include <mutex>

#include <poll.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

std::atomic<int> lockFailure = 0;

} // namespace

/// The system's own, unless a test wants it to fail.
extern "C" int flock(int descriptor, int operation) noexcept
{
    if (lockFailure == 0)
        return int(syscall(SYS_flock, descriptor, operation));
    errno = lockFailure;
    return -1;
}

namespace {

/// The newest first; an asterisk marks a star.
QString namesOf(const QList<HistoryItem> &items)
{
    QStringList names;
    for (const HistoryItem &each : items)
        names.append(each.originalText + (each.isStarred ? u"*"_s : QString()));
    return names.join(u' ');
}

} // namespace

class HistoryManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"history.json"_s);
        m_queue = std::make_unique<MainQueue>();
        m_lines.clear();
    }

    void cleanup()
    {
        m_manager.reset();
        m_queue.reset();
    }

    void repeatsOfTheNewestAreLeftOut()
    {
        create();
        const auto add = [this](const QString &original, const QString &translated) {
            m_manager->add(original, translated);
            m_queue->drain();
        };
        m_manager->add(u"a"_s, u"A"_s);
        QVERIFY(m_manager->history().isEmpty()); // it waits for the main queue
        m_queue->drain();
        add(u"a"_s, u"A"_s);
        QCOMPARE(namesOf(m_manager->history()), u"a"_s);
        add(u"b"_s, u"B"_s);
        add(u"a"_s, u"A"_s);
        add(u"a"_s, u"another translation"_s);
        QCOMPARE(namesOf(m_manager->history()), u"a a b a"_s);
        QVERIFY(m_manager->history()[0].id != m_manager->history()[1].id);
        // What still waits is not compared with.
        m_manager->add(u"c"_s, u"C"_s);
        m_manager->add(u"c"_s, u"C"_s);
        m_queue->drain();
        QCOMPARE(namesOf(m_manager->history()), u"c c a a b a"_s);
    }

    void trimming_data()
    {
        // starred: the oldest
        const auto row =
            columns<int, int, int, QString, QString>("starred", "unstarred", "left", "newest", "oldestUnstarred");
        row("room for one", 0, 999, 1000, u"new"_s, u"u0"_s);
        row("full", 0, 1000, 1000, u"new"_s, u"u1"_s);
        row("full, the oldest with a star", 1, 999, 1000, u"new"_s, u"u1"_s);
        row("the file held more", 2, 1010, 1000, u"new"_s, u"u13"_s);
        row("only stars", 1001, 0, 1001, u"s1000*"_s, {});
        row("one below the limit, all stars", 999, 0, 1000, u"new"_s, u"new"_s);
    }
    void trimming()
    {
        const auto [starred, unstarred] = fetched<int, int>();
        QList<HistoryItem> items;
        for (int i = 0; i < starred; ++i)
            items.prepend(item(u"s%1"_s.arg(i), i, true));
        for (int i = 0; i < unstarred; ++i)
            items.prepend(item(u"u%1"_s.arg(i), starred + i));
        createWith(items);
        QCOMPARE(m_manager->history(), items); // in the order of the file
        m_manager->add(u"new"_s, u"NEW"_s);
        m_queue->drain();

        const QList<HistoryItem> history = m_manager->history();
        QTEST(int(history.size()), "left");
        QTEST(namesOf({history.first()}), "newest");
        QString oldestUnstarred;
        int stars = 0;
        for (const HistoryItem &each : history) {
            stars += each.isStarred ? 1 : 0;
            oldestUnstarred = each.isStarred ? oldestUnstarred : each.originalText;
        }
        QCOMPARE(stars, starred);
        QTEST(oldestUnstarred, "oldestUnstarred");
        QCOMPARE(written(), history);
    }

    /// A service that answers with megabytes, of which each character takes six bytes in the file.
    void hostileAnswersPushNothingOut()
    {
        if (isSanitized)
            QSKIP("writes hundreds of megabytes, which takes too long");
        const QString controls(1 << 20, QChar(1));
        const QString pairs = u"x"_s + u"👍"_s.repeated(1 << 19);
        QList<HistoryItem> before;
        for (int i = 0; i < 500; ++i)
            before.append(item(u"e%1"_s.arg(i), 1000 - i));
        QList<HistoryItem> full = before;
        while (full.size() < before.size() + 84) { // of 768 KiB each
            const QString longest = controls.first(HistoryManager::maxTextLength);
            full.prepend(newHistoryItem(longest, longest));
        }
        createWith(full);
        for (int i = 0; i < 5; ++i)
            m_manager->add(QString::number(i) + controls, controls);
        m_manager->add(u"last"_s, pairs);
        m_queue->drain();
        const QList<HistoryItem> after = written();
        QCOMPARE(after, m_manager->history());
        QVERIFY(QFileInfo(m_path).size() <= HistoryManager::maxBytes);
        for (const HistoryItem &each : after) {
            QVERIFY(each.translatedText.size() <= HistoryManager::maxTextLength);
            QVERIFY(each.translatedText.isValidUtf16());
        }
        for (const HistoryItem &each : before)
            QVERIFY2(after.contains(each), qPrintable(each.originalText));
        QCOMPARE(m_lines.filter(u"was cut"_s).size(), 11);
        QVERIFY(!m_lines.filter(u"were dropped"_s).isEmpty());
        m_manager->add(u"last"_s, pairs); // the newest once more
        QCOMPARE(written(), after);
    }

    void twoProgramsOnOneFile()
    {
        createWith({item(u"c"_s, 3), item(u"b"_s, 2), item(u"a"_s, 1)});
        MainQueue otherQueue;
        HistoryManager other(m_path, otherQueue, {});
        const auto write = [&](HistoryManager &manager, const QString &name) {
            manager.add(name, name);
            manager.finish();
            otherQueue.drain();
            m_queue->drain();
        };
        otherQueue.drain();
        m_manager->deleteItem(m_manager->history()[1].id);
        write(*m_manager, u"x"_s);
        other.toggleStar(other.history()[1].id); // which is deleted by now, and stays so
        other.toggleStar(other.history()[2].id);
        write(other, u"y"_s);
        QCOMPARE(namesOf(other.history()), u"y x c a*"_s);
        QCOMPARE(namesOf(m_manager->history()), u"x c a"_s);
        write(*m_manager, u"z"_s);
        QCOMPARE(namesOf(m_manager->history()), u"z y x c a*"_s);
        m_manager->toggleStar(m_manager->history().last().id);
        const QList<HistoryItem> cleared = m_manager->clearUnstarred();
        QVERIFY(written().isEmpty());
        write(other, u"w"_s);
        QCOMPARE(namesOf(other.history()), u"w"_s);
        m_manager->restore(cleared);
        QCOMPARE(namesOf(written()), u"w z y x c a"_s);
    }

    /// Two processes add entries, and each is killed again and again. What one of them knows to be written stays.
    void twoProgramsKilledAtAnyMoment()
    {
        struct Program
        {
            pid_t process = 0;
            int written = -1;
        };
        const auto start = [this](int number) {
            int ends[2];
            if (pipe(ends) != 0)
                return Program();
            const pid_t process = fork();
            if (process > 0) {
                close(ends[1]);
                return Program{process, ends[0]};
            }
            MainQueue queue;
            bool hasFailed = false;
            HistoryManager manager(m_path, queue, [&](const QString &line) {
                hasFailed = true;
                qWarning("%s", qPrintable(line));
            });
            for (int i = 0; !hasFailed; ++i) {
                const QString name = u"%1.%2\n"_s.arg(number).arg(i);
                manager.add(name, u"x"_s);
                manager.finish();
                queue.drain();
                if (!hasFailed && ::write(ends[1], name.toLatin1().constData(), size_t(name.size())) < 0)
                    break;
                usleep(3000); // the other one's turn
            }
            _exit(1);
        };
        const auto killed = [](const Program &program) {
            int status = 0;
            if (program.process <= 0 || kill(program.process, SIGKILL) != 0 ||
                waitpid(program.process, &status, 0) != program.process || !WIFSIGNALED(status))
                return QStringList{u"a program that ended by itself"_s};
            QFile written;
            (void)written.open(program.written, QIODevice::ReadOnly, QFile::AutoCloseHandle);
            return QString::fromLatin1(written.readAll()).split(u'\n', Qt::SkipEmptyParts);
        };
        for (int round = 0; round < (isSanitized ? 2 : 10); ++round) {
            QFile::remove(m_path);
            std::array<Program, 2> programs{start(0), start(1)};
            QStringList known;
            for (int i = 0; i < 20; ++i) {
                Program &program = programs[i % 2];
                pollfd underWay{.fd = program.written, .events = POLLIN, .revents = 0};
                QVERIFY(poll(&underWay, 1, 20000) == 1);
                usleep(useconds_t(QRandomGenerator::global()->bounded(15000)));
                known += killed(program);
                if (i < 18)
                    program = start(i + 2);
            }
            const auto content = readHistoryFile(m_path);
            QVERIFY(content && content->items.size() < HistoryManager::maxItems && known.size() >= 20);
            QSet<QString> inFile;
            for (const HistoryItem &each : content->items)
                inFile.insert(each.originalText.trimmed());
            for (const QString &name : std::as_const(known))
                QVERIFY2(inFile.contains(name), qPrintable(name));
            removeUnfinishedCopies(m_path);
            QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                     (QStringList{u".history.json.lock"_s, u"history.json"_s}));
        }
    }

    void starsDeletionsAndClearing()
    {
        createWith({item(u"d"_s, 4), item(u"c"_s, 3), item(u"b"_s, 2), item(u"a"_s, 1)});
        QSignalSpy changes(m_manager.get(), &HistoryManager::changed);
        const QUuid unknown = QUuid::createUuid();
        m_manager->toggleStar(unknown);
        QVERIFY(!m_manager->deleteItem(unknown));
        QCOMPARE(changes.count(), 0);

        m_manager->toggleStar(m_manager->history()[2].id);
        m_manager->toggleStar(m_manager->history()[3].id);
        m_manager->toggleStar(m_manager->history()[3].id);
        QCOMPARE(namesOf(written()), u"d c b* a"_s);
        const auto removed = m_manager->deleteItem(m_manager->history()[1].id);
        QVERIFY(removed);
        QCOMPARE(*removed, item(u"c"_s, 3));
        QCOMPARE(changes.count(), 4);
        QCOMPARE(namesOf(written()), u"d b* a"_s);

        QCOMPARE(namesOf(m_manager->clearUnstarred()), u"d a"_s);
        QCOMPARE(namesOf(written()), u"b*"_s);
        QFile::remove(m_path);
        QVERIFY(m_manager->clearUnstarred().isEmpty());
        m_manager->restore({});
        m_manager->finish();
        QVERIFY(!QFile::exists(m_path)); // nothing changed, nothing was written
        QCOMPARE(changes.count(), 5);
    }

    void restoring_data()
    {
        const auto row = columns<QList<HistoryItem>, QString>("items", "history");
        using Items = QList<HistoryItem>;
        // The history is d4 b2 a1.
        row("between the others", Items{item(u"c"_s, 3, true)}, u"d c* b a"_s);
        row("newer and older ones at once", Items{item(u"x"_s, 0), item(u"y"_s, 9)}, u"y d b a x"_s);
        row("of the same time: behind", Items{item(u"x"_s, 2), item(u"y"_s, 2)}, u"d b x y a"_s);
        row("still there, with another star", Items{item(u"b"_s, 2, true)}, u"d b a"_s);
    }
    void restoring()
    {
        QFETCH(QList<HistoryItem>, items);
        createWith({item(u"d"_s, 4), item(u"b"_s, 2), item(u"a"_s, 1)});
        m_manager->restore(items);
        QTEST(namesOf(m_manager->history()), "history");
        QCOMPARE(written(), m_manager->history());
    }

    void operationsBeforeTheFileListIsAssigned()
    {
        QVERIFY(writeHistoryFile(m_path, {item(u"b"_s, 2), item(u"a"_s, 1, true)}));
        create();
        m_manager->add(u"b"_s, u"B"_s); // the file's newest once more
        m_manager->add(u"c"_s, u"C"_s);
        QCOMPARE(namesOf(written()), u"c b a*"_s);
        QSignalSpy changes(m_manager.get(), &HistoryManager::changed);
        m_queue->drain(); // the tasks of both find nothing to do
        QCOMPARE(namesOf(m_manager->history()), u"c b a*"_s);
        m_manager->add(u"d"_s, u"D"_s);
        m_manager.reset(); // writes what waits, without a word
        m_queue->drain();
        QCOMPARE(changes.count(), 0);
        QCOMPARE(namesOf(readHistoryFile(m_path)->items), u"d c b a*"_s);

        create();
        m_manager->restore({item(u"x"_s, 3)});
        m_queue->drain();
        QCOMPARE(namesOf(m_manager->history()), u"d c x b a*"_s);
        QCOMPARE(written(), m_manager->history());

        create();
        QCOMPARE(namesOf(m_manager->clearUnstarred()), u"d c x b"_s);
        m_queue->drain();
        QCOMPARE(namesOf(m_manager->history()), u"a*"_s);
    }

    void unreadableFileIsKeptUntilTheFirstSave()
    {
        const QByteArray content = R"([{"id":"secret")";
        writeFile(m_path, content);
        create();
        m_queue->drain();
        QVERIFY(m_manager->history().isEmpty());
        QCOMPARE(m_lines.size(), 1);
        QVERIFY(m_lines.first().startsWith(u"Failed to load history: "_s));
        QVERIFY(!m_lines.first().contains(u"secret"_s));
        m_manager->finish();
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"history.json"_s});

        for (const QString &text : {u"a"_s, u"b"_s})
            m_manager->add(text, text);
        QCOMPARE(namesOf(written()), u"b a"_s);
        m_manager->clearUnstarred();
        QCOMPARE(namesOf(written()), QString());
        const QStringList kept = QDir(m_folder->path()).entryList({u"history.unreadable-*.json"_s}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QCOMPARE(contentOf(m_folder->filePath(kept.first())), content);
        QCOMPARE(m_lines.size(), 1);
    }

    void failedWritesAreReportedAndMadeGood()
    {
        // Even a super-user can't write into a folder that is a file.
        const QString blocked = m_folder->filePath(u"folder"_s);
        writeFile(blocked, {});
        m_path = blocked + u"/history.json"_s;
        create();
        m_manager->add(u"a"_s, u"A"_s);
        m_manager->finish();
        QCOMPARE(m_lines.size(), 1);
        QVERIFY(m_lines.first().startsWith(u"Failed to save history: "_s));
        QCOMPARE(namesOf(m_manager->history()), u"a"_s);

        QVERIFY(QFile::remove(blocked) && QDir().mkpath(blocked));
        QCOMPARE(namesOf(written()), u"a"_s);
        m_manager->add(u"b"_s, u"B"_s);
        QCOMPARE(namesOf(written()), u"b a"_s);
        QCOMPARE(m_lines.size(), 1);
    }

    void nothingIsLostWithoutALock()
    {
        createWith({item(u"a"_s, 1)});
        m_manager->add(u"b"_s, u"B"_s);
        {
            const FileLock hanging(m_path, 0ms); // another program's
            m_manager->finish(true);
        }
        QCOMPARE(namesOf(readHistoryFile(m_path)->items), u"b a"_s);
        create();
        lockFailure = ENOLCK; // a file system that has no locks
        m_manager->add(u"c"_s, u"C"_s);
        QCOMPARE(namesOf(written()), u"c b a"_s);
        lockFailure = 0;
        QCOMPARE(m_lines.filter(u"without a lock"_s).size(), 2);
    }

    void foldersAreMadePrivateAndAnew()
    {
        m_path = m_folder->filePath(u"share/Lucentra/history.json"_s);
        create();
        const auto everybody = QFile::ReadOther | QFile::ExeOther | QFile::ReadGroup;
        QCOMPARE(QFile::permissions(m_folder->filePath(u"share/Lucentra"_s)) & everybody, QFile::Permissions());
        QVERIFY(QDir(m_folder->filePath(u"share"_s)).removeRecursively());
        m_manager->add(u"a"_s, u"A"_s);
        QCOMPARE(namesOf(written()), u"a"_s);
        QVERIFY(m_lines.isEmpty());
    }

    void nothingIsRecordedWhilePaused()
    {
        create();
        m_manager->add(u"a"_s, u"A"_s); // before, though it still waits
        m_manager->setPaused(true);
        m_manager->add(u"b"_s, u"B"_s);
        m_queue->drain();
        QCOMPARE(namesOf(m_manager->history()), u"a"_s);
        m_manager->toggleStar(m_manager->history().first().id);
        m_manager->setPaused(false);
        m_manager->add(u"b"_s, u"B"_s);
        QCOMPARE(namesOf(written()), u"b a*"_s);
    }

private:
    void create()
    {
        m_manager.reset(); // the next one reads what this one writes
        m_manager = std::make_unique<HistoryManager>(m_path, *m_queue, [this](const QString &line) {
            const std::lock_guard lock(m_mutex);
            m_lines.append(line);
        });
    }

    void createWith(const QList<HistoryItem> &items)
    {
        QVERIFY(writeHistoryFile(m_path, items));
        create();
        m_queue->drain();
    }

    QList<HistoryItem> written() const
    {
        m_manager->finish();
        return readHistoryFile(m_path).value_or(HistoryFileContent()).items;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MainQueue> m_queue;
    std::unique_ptr<HistoryManager> m_manager;
    QString m_path;
    std::mutex m_mutex;
    QStringList m_lines; // guarded by m_mutex while the writer runs
};

static const TestClass<HistoryManagerTest> historyManagerTest;
#include "HistoryManagerTest.moc"
