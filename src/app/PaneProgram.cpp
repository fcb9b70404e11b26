#include "PaneProgram.h"

#include "AppDelegate.h"
#include "CommandLine.h"
#include "DisplayLoss.h"
#include "LegacyMigration.h"
#include "MakeDesktop.h"
#include "ProgramEnd.h"
#include "RemoteControl.h"
#include "Scheduler.h"
#include "Services.h"
#include "SessionBus.h"
#include "Version.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

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
    const auto shown = sendRemoteCommand(u"show", QDBusConnection::sessionBus(), services.texts());
    if (shown)
        return int(ExitCode::Done);
    printError(shown.error().description);
    return int(ExitCode::Failed);
}

} // namespace

int runPane(int argc, char *argv[], PaneAtStart paneAtStart)
{
    if (const auto missing = prepareDesktop())
        return explainMissingDesktop(argc, argv, *missing);
    ProgramEnd end;
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"lucentra"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(programVersion));
    QGuiApplication::setDesktopFileName(u"com.tarnby.lucentra"_s);
    QApplication::setWindowIcon(QIcon(u":/lucentra/icons/com.tarnby.lucentra.svg"_s));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    // Not QCoreApplication::quit: it closes every window first, and the pane refuses, since it only hides.
    end.listen([] { QCoreApplication::exit(); });
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
    remoteControl.onCommand = [&delegate](QStringView command) { return delegate.perform(command); };
    if (displayClaim)
        displayClaim->onShowAsked = [&delegate] { delegate.perform(u"show"); };
    delegate.applicationDidFinishLaunching(paneAtStart);
    const int code = QApplication::exec();
    end.begin(code);
    if (displayClaim)
        displayClaim->onShowAsked = nullptr;
    remoteControl.onCommand = nullptr; // later commands are for the next start
    delegate.applicationWillTerminate();
    end.beginStoring();
    delegate.completeStoring();
    end.endStoring();
    return code;
}

} // namespace lucentra
