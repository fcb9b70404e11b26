#include "DisplayLoss.h"

#include "CommandLine.h"
#include "MakeDesktop.h"
#include "PaneProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <cstdlib>
#include <thread>
#include <utility>

#include <unistd.h>

using namespace std::chrono_literals;
namespace lucentra {

namespace {

/// Longest wait for the display to come back.
constexpr auto displayPatience = 10s;
/// Longest time for storing.
constexpr auto storingPatience = 5s;
/// If the display breaks sooner after the start, the program doesn't start again.
constexpr auto shortestUse = 5s;

} // namespace

DisplayLoss::DisplayLoss(Program program)
    : m_program(std::move(program))
    , m_previous(qInstallMessageHandler(&DisplayLoss::handle))
{
    current = this;
}

DisplayLoss::~DisplayLoss()
{
    qInstallMessageHandler(m_previous);
    current = nullptr;
}

void DisplayLoss::handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    current->m_previous(type, context, message);
    const bool isLoss =
        message.startsWith(u"The X11 connection broke") || message.startsWith(u"The Wayland connection broke");
    if (!isLoss)
        return;
    if (QThread::currentThread() == qApp->thread())
        current->end();
    // The toolkit's own threads notice the loss as well and end the process when this function returns.
    QMetaObject::invokeMethod(
        qApp, [] { current->end(); }, Qt::QueuedConnection);
    std::this_thread::sleep_for(displayPatience + storingPatience);
}

void DisplayLoss::end()
{
    m_program.completeStoring();
    const bool isWorthIt = std::chrono::steady_clock::now() - m_begin >= shortestUse;
    if (isWorthIt && waitForDisplay(displayPatience)) {
        QByteArray program = QFile::encodeName(QCoreApplication::applicationFilePath());
        QByteArray option(waitForCommandOption);
        char *arguments[] = {program.data(), m_program.isPaneShown() ? nullptr : option.data(), nullptr};
        execv(program.constData(), arguments);
    }
    std::_Exit(int(ExitCode::Failed));
}

} // namespace lucentra
