#include "PaneProgram.h"

#include "AppDelegate.h"
#include "CommandLine.h"
#include "TerminationSignals.h"
#include "Version.h"

#include <QApplication>

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

} // namespace

int runPane(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fputs("Lucentra needs a desktop: DISPLAY isn't set.\n", stderr);
        return int(ExitCode::Failed);
    }
    // The pane is placed, kept on top and left out of captures by means of X11, in Wayland sessions as well.
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"lucentra"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(programVersion));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const TerminationSignals signalsToQuit([] { QCoreApplication::quit(); });
    AppDelegate delegate(&printDiagnostic);
    delegate.applicationDidFinishLaunching();
    const int code = QApplication::exec();
    delegate.applicationWillTerminate();
    return code;
}

} // namespace lucentra
