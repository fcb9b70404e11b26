#include "PaneProgram.h"

#include "AppDelegate.h"
#include "CommandLine.h"
#include "DisplayLoss.h"
#include "LegacyMigration.h"
#include "MakeDesktop.h"
#include "RemoteControl.h"
#include "Scheduler.h"
#include "Services.h"
#include "SessionBus.h"
#include "TerminationSignals.h"
#include "Version.h"

#include <QApplication>
#include <QIcon>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <stop_token>
#include <thread>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Longest time for quitting once everything is stored.
constexpr auto longestEnd = 900ms;
/// Longest time for closing the windows, before anything is stored: the X server may hang.
constexpr auto longestClosing = 5s;

void printDiagnostic(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

void printError(const QString &message)
{
    std::fputs((message + u'\n').toUtf8().constData(), stderr);
}

int explainMissingDesktop(int argc, char *argv[], const QString &reason)
{
    const QCoreApplication application(argc, argv);
    Services services(&printDiagnostic, {});
    printError(services.texts().localized(reason));
    return int(ExitCode::Failed);
}

/// Migrates the data of an earlier version, before any setting is read.
void migrateFormerVersion()
{
    SettingsStore settings(SettingsStore::userFilePath(), &printDiagnostic);
    migrateLegacyData(settings, HistoryManager::userFilePath(), LegacyFolders::ofUser(), &printDiagnostic);
}

/// For a second start: makes the running program show its pane.
int showRunningProgram(PaneAtStart paneAtStart)
{
    if (paneAtStart == PaneAtStart::WaitsForCommand)
        return int(ExitCode::Done); // the command reaches the running program
    Services services(&printDiagnostic, {});
    const auto shown = sendRemoteCommand(Invocation::Command::Show, QDBusConnection::sessionBus(), services.texts());
    if (shown)
        return int(ExitCode::Done);
    printError(shown.error().description);
    return int(ExitCode::Failed);
}

/// Ends the process if quitting takes too long. What is being stored is completed first.
class EndDeadline
{
public:
    enum class State { Closing, Storing, Stored };

    /// Any thread. Only the first call has an effect.
    void start(int code)
    {
        const std::lock_guard starting(m_mutex);
        if (m_thread.joinable())
            return;
        m_thread = std::jthread([this, code, begun = std::chrono::steady_clock::now()](const std::stop_token &stop) {
            std::unique_lock lock(m_mutex);
            const auto hasBegunToStore = [this] { return m_state != State::Closing; };
            if (m_changed.wait_until(lock, stop, begun + longestClosing, hasBegunToStore)) {
                m_changed.wait(lock, stop, [this] { return m_state == State::Stored; });
                m_changed.wait_until(lock, stop, begun + longestEnd, [] { return false; });
            }
            if (!stop.stop_requested())
                std::_Exit(code);
        });
    }

    void setState(State state)
    {
        const std::lock_guard lock(m_mutex);
        m_state = state;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    State m_state = State::Closing;
    std::jthread m_thread; ///< its destructor stops it
};

} // namespace

int runPane(int argc, char *argv[], PaneAtStart paneAtStart)
{
    if (const auto missing = prepareDesktop())
        return explainMissingDesktop(argc, argv, *missing);
    EndDeadline endDeadline;
    TerminationSignals signalsToQuit([&endDeadline] { endDeadline.start(int(ExitCode::Done)); });
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"lucentra"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(programVersion));
    QGuiApplication::setDesktopFileName(u"com.tarnby.lucentra"_s);
    QApplication::setWindowIcon(QIcon(u":/lucentra/icons/com.tarnby.lucentra.svg"_s));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    // Not QCoreApplication::quit: it closes every window first, and the pane refuses, since it only hides.
    signalsToQuit.listen([] { QCoreApplication::exit(); });
    EventLoopScheduler scheduler;
    SessionBus bus(scheduler);
    RemoteControl remoteControl(bus.connection());
    const auto claim = remoteControl.claim();
    if (claim == RemoteControl::Claim::Taken)
        return showRunningProgram(paneAtStart);
    const auto displayClaim = makeProgramClaim(claim != RemoteControl::Claim::NoBus);
    if (claim == RemoteControl::Claim::NoBus && displayClaim->isTaken()) {
        displayClaim->askToShow();
        return int(ExitCode::Done);
    }
    migrateFormerVersion();
    QObject::connect(&bus, &SessionBus::returned, &remoteControl,
                     [&remoteControl, &bus] { remoteControl.moveTo(bus.connection()); });
    AppDelegate delegate(scheduler, bus, &printDiagnostic);
    const DisplayLoss displayLoss({.completeStoring = [&delegate] { delegate.completeStoring(); },
                                   .isPaneShown = [&delegate] { return delegate.isPaneShown(); }});
    remoteControl.onCommand = [&delegate](Invocation::Command command) { return delegate.perform(command); };
    if (displayClaim)
        displayClaim->onShowAsked = [&delegate] { delegate.perform(Invocation::Command::Show); };
    delegate.applicationDidFinishLaunching(paneAtStart);
    const int code = QApplication::exec();
    TerminationSignals::endAtOnce();
    endDeadline.start(code);
    if (displayClaim)
        displayClaim->onShowAsked = nullptr;
    remoteControl.onCommand = nullptr; // later commands are for the next start
    delegate.applicationWillTerminate();
    endDeadline.setState(EndDeadline::State::Storing);
    delegate.completeStoring();
    endDeadline.setState(EndDeadline::State::Stored);
    return code;
}

} // namespace lucentra
