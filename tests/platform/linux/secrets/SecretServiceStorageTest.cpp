#include "SecretServiceStorage.h"
#include "Columns.h"
#include "TestProgram.h"

#include "PrivateKeyring.h"
#include "SecretServiceClient.h"
#include "SilentBusName.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTest>

#include <csignal>
#include <thread>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const auto service = u"org.example.keys"_s;
constexpr auto collectionInterface = "org.freedesktop.Secret.Service"_L1;

/// A clock that is pushed, besides going on by itself.
struct PushedClock
{
    std::shared_ptr<std::atomic<std::chrono::seconds::rep>> ahead =
        std::make_shared<std::atomic<std::chrono::seconds::rep>>(0);

    std::chrono::steady_clock::time_point operator()() const
    {
        return std::chrono::steady_clock::now() + std::chrono::seconds(*ahead);
    }
};

template <typename Value>
int problemOf(const Result<Value> &result)
{
    return result ? 0 : result.error().code;
}

template <typename Value>
QByteArray reasonOf(const Result<Value> &result)
{
    return result ? QByteArray() : result.error().description.toUtf8();
}

} // namespace

class SecretServiceStorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemsAreFoundReplacedAndRemoved()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring());
        SecretServiceStorage storage;
        QCOMPARE(storage.lookupAll(service).value(), (QHash<QString, QByteArray>()));
        const auto before = storage.lookup(service, u"a"_s);
        QVERIFY2(before, reasonOf(before).constData());
        QVERIFY(!before->has_value());
        keyring.run(u"secret-tool"_s, {u"store"_s, u"--label=x"_s, u"service"_s, service, u"account"_s, u"t"_s},
                    "theirs");
        QCOMPARE(storage.lookup(service, u"t"_s).value(), std::optional("theirs"_ba));
        QTest::qWait(1100); // items are dated to the second
        QVERIFY(storage.store(service, u"t"_s, "ours"));
        QCOMPARE(storage.lookup(service, u"t"_s).value(), std::optional("ours"_ba));
        QVERIFY(storage.remove(service, u"t"_s));
        QVERIFY(!storage.lookup(service, u"t"_s).value());
        for (const QByteArray &value : {QString(u"金鑰\u3000key\n"_s).toUtf8(), QByteArray("\xff\x00\xfe", 3),
                                        QByteArray(65536, 'x'), "new"_ba}) {
            QVERIFY(storage.store(service, u"a"_s, value));
            QCOMPARE(storage.lookup(service, u"a"_s).value(), std::optional(value)); // byte for byte
        }
        QVERIFY(storage.store(service, u"b"_s, "2"));
        QVERIFY(storage.store(u"org.example.others"_s, u"c"_s, "3"));
        QCOMPARE(storage.lookupAll(service).value(), (QHash<QString, QByteArray>{{u"a"_s, "new"}, {u"b"_s, "2"}}));
        const QByteArray found =
            keyring.run(u"secret-tool"_s, {u"search"_s, u"--all"_s, u"service"_s, service, u"account"_s, u"a"_s});
        QCOMPARE(found.count("secret = "), 1);
        for (int time = 0; time < 2; ++time)
            QVERIFY(storage.remove(service, u"a"_s));
        QCOMPARE(storage.lookupAll(service).value(), (QHash<QString, QByteArray>{{u"b"_s, "2"}}));
    }

    void callsFromManyThreadsAtOnce()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring());
        SecretServiceStorage storage;
        std::atomic<int> failures = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 6; ++i)
            threads.emplace_back([&, i] {
                const QString account = QString::number(i);
                if (!storage.store(service, account, account.toUtf8()) ||
                    storage.lookup(service, account).value_or(std::nullopt) != account.toUtf8())
                    ++failures;
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(failures.load(), 0);
        QCOMPARE(storage.lookupAll(service).value().size(), 6);
    }

    void aRestartCostsNothing()
    {
        // Of the keyring or of the bus, and noticed by a call in between or not.
        for (const auto &[ofTheBus, isNoticed] :
             {std::pair(false, true), std::pair(false, false), std::pair(true, true), std::pair(true, false)}) {
            PrivateKeyring keyring;
            QVERIFY(keyring.startBus() && keyring.startKeyring());
            SecretServiceStorage storage;
            QVERIFY(storage.store(service, u"a"_s, "1"));
            keyring.stopKeyring();
            if (ofTheBus)
                keyring.stopBus();
            QVERIFY(!isNoticed || !storage.lookup(service, u"a"_s));
            QVERIFY(!ofTheBus || keyring.startBus());
            QVERIFY(keyring.startKeyring());
            const auto found = storage.lookup(service, u"a"_s);
            QVERIFY2(found, reasonOf(found).constData());
            QCOMPARE(*found, std::optional("1"_ba));
        }
    }

    void nothingIsHeldByWhatDoesNotAnswer_data()
    {
        // problem: 0: the system's own
        const auto row = columns<QString, int>("situation", "problem");
        row("no bus is known", u"none"_s, int(SecretStorageProblem::NoBus));
        row("the bus is gone", u"gone"_s, 0);
        row("the bus accepts and says nothing", u"silent bus"_s, int(SecretStorageProblem::NoAnswer));
        row("no service on the bus", u"no service"_s, int(SecretStorageProblem::NoService));
        row("the service takes calls and never answers", u"silent service"_s, int(SecretStorageProblem::NoAnswer));
    }
    void nothingIsHeldByWhatDoesNotAnswer()
    {
        QFETCH(QString, situation);
        PrivateKeyring keyring;
        QLocalServer silentBus;
        std::unique_ptr<SilentBusName> silentService;
        if (situation == "none"_L1)
            qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        else if (situation == "silent bus"_L1)
            QVERIFY(silentBus.listen(keyring.busAddress().section(u'=', 1)));
        else if (situation != "gone"_L1)
            QVERIFY(keyring.startBus());
        if (situation == "silent service"_L1) {
            silentService = std::make_unique<SilentBusName>(keyring.busAddress(), u"org.freedesktop.secrets"_s);
            QVERIFY(silentService->isOwner());
        }

        QElapsedTimer time;
        {
            SecretServiceStorage storage;
            time.start();
            const auto first = storage.lookupAll(service);
            QVERIFY(!first);
            const int code = first.error().code;
            QTEST(code < int(SecretStorageProblem::NoAnswer) ? 0 : code, "problem");
            QVERIFY2(time.restart() < 1000, "first call");
            const auto second = storage.store(service, u"a"_s, "1");
            QVERIFY(!second);
            QVERIFY(!second.error().description.isEmpty());
            QVERIFY2(time.restart() < 300, "second call");
        }
        QVERIFY2(time.elapsed() < 500, "the end of the thread");
        QTRY_VERIFY(!silentService || silentService->callCount() > 0);
    }

    void aServiceThatHangsIsLeftAloneForAWhile()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring());
        PushedClock clock;
        SecretServiceStorage storage(clock);
        QVERIFY(storage.store(service, u"a"_s, "1"));

        ::kill(pid_t(keyring.keyringProcess()), SIGSTOP);
        QElapsedTimer time;
        time.start();
        const auto held = storage.lookup(service, u"a"_s);
        const qint64 firstMilliseconds = time.restart();
        const auto refused = storage.lookup(service, u"a"_s);
        const qint64 secondMilliseconds = time.restart();
        ::kill(pid_t(keyring.keyringProcess()), SIGCONT);
        QCOMPARE(problemOf(held), int(SecretStorageProblem::NoAnswer));
        QVERIFY2(firstMilliseconds < 1000, qPrintable(QString::number(firstMilliseconds)));
        QCOMPARE(problemOf(refused), int(SecretStorageProblem::NoAnswer));
        QVERIFY2(secondMilliseconds < 200, qPrintable(QString::number(secondMilliseconds)));

        *clock.ahead = 29;
        QVERIFY(!storage.lookup(service, u"a"_s));
        *clock.ahead = 31;
        QCOMPARE(storage.lookup(service, u"a"_s).value_or(std::nullopt), std::optional("1"_ba));
    }

    void aLockedKeyringAsksTheUserOnce()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring());
        // The program that shows the keyring's questions; this one never gets an answer from its user.
        SilentBusName prompter(keyring.busAddress(), u"org.gnome.keyring.SystemPrompter"_s);
        QVERIFY(prompter.isOwner());
        SecretServiceStorage storage;
        QVERIFY(storage.store(service, u"a"_s, "1"));
        keyring.call(collectionInterface + u".Lock"_s, {u"['/org/freedesktop/secrets/aliases/default']"_s});

        QElapsedTimer time;
        time.start();
        QCOMPARE(problemOf(storage.lookup(service, u"a"_s)), int(SecretStorageProblem::Locked));
        QVERIFY(time.elapsed() < 500);
        QTRY_COMPARE(prompter.callCount(), 1);
        QCOMPARE(problemOf(storage.lookup(service, u"never stored"_s)), int(SecretStorageProblem::Locked));
        QCOMPARE(problemOf(storage.lookupAll(service)), int(SecretStorageProblem::Locked));
        QCOMPARE(problemOf(storage.store(service, u"a"_s, "2")), int(SecretStorageProblem::Locked));
        QCOMPARE(problemOf(storage.remove(service, u"a"_s)), int(SecretStorageProblem::Locked));
        QTest::qWait(200);
        QCOMPARE(prompter.callCount(), 1);

        QVERIFY(keyring.unlock());
        QCOMPARE(storage.lookup(service, u"a"_s).value_or(std::nullopt), std::optional("1"_ba));
    }

    void aRefusedPromptIsNotRepeatedAtOnce()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring());
        PushedClock clock;
        SecretServiceStorage storage(clock);
        QVERIFY(storage.store(service, u"a"_s, "1"));
        keyring.call(collectionInterface + u".Lock"_s, {u"['/org/freedesktop/secrets/aliases/default']"_s});
        // Nobody can show the question: the keyring gives it up at once, as it does when the user refuses.
        QCOMPARE(problemOf(storage.lookup(service, u"a"_s)), int(SecretStorageProblem::Locked));
        QTest::qWait(300);
        SilentBusName prompter(keyring.busAddress(), u"org.gnome.keyring.SystemPrompter"_s);
        QVERIFY(prompter.isOwner());
        QCOMPARE(problemOf(storage.lookup(service, u"a"_s)), int(SecretStorageProblem::Locked));
        QTest::qWait(300);
        QCOMPARE(prompter.callCount(), 0);
        *clock.ahead = 31;
        QCOMPARE(problemOf(storage.lookup(service, u"a"_s)), int(SecretStorageProblem::Locked));
        QTRY_COMPARE(prompter.callCount(), 1);
    }

    void withoutADefaultKeyringTheUserIsAskedToMakeOne()
    {
        PrivateKeyring keyring;
        QVERIFY(keyring.startBus() && keyring.startKeyring(false));
        SilentBusName prompter(keyring.busAddress(), u"org.gnome.keyring.SystemPrompter"_s);
        QVERIFY(prompter.isOwner());
        SecretServiceStorage storage;
        const auto nothing = storage.lookup(service, u"a"_s);
        QVERIFY2(nothing, reasonOf(nothing).constData());
        QVERIFY(!*nothing);
        QCOMPARE(prompter.callCount(), 0);
        QCOMPARE(problemOf(storage.store(service, u"a"_s, "1")), int(SecretStorageProblem::NoKeyring));
        QTRY_COMPARE(prompter.callCount(), 1);
    }
};

static const TestClass<SecretServiceStorageTest> secretServiceStorageTest;
#include "SecretServiceStorageTest.moc"
