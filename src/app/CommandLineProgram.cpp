#include "CommandLineProgram.h"

#include "CommandLine.h"
#include "Commands.h"
#include "Services.h"
#include "Version.h"

#include <QGuiApplication>

#include <cstdio>
#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Command = Invocation::Command;

void print(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

void printLine(std::FILE *stream, const QString &line)
{
    print(stream, line + u'\n');
}

/// Pictures need fonts and so a window system's plug-in, though no window system; texts need neither.
std::unique_ptr<QCoreApplication> makeApplication(bool drawsPictures, int &argc, char *argv[])
{
    if (!drawsPictures)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

QStringList argumentsAfterName(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

ExitCode run(const Invocation &invocation, Services &services)
{
    Result<CommandOutput> output;
    switch (invocation.command) {
    case Command::Help:
        print(stdout, helpPage(services.texts()));
        return ExitCode::Done;
    case Command::Version:
        printLine(stdout, u"lucentra "_s + QCoreApplication::applicationVersion());
        return ExitCode::Done;
    case Command::Recognize:
        output = recognizeCommand(invocation, services);
        break;
    case Command::Image:
        output = imageCommand(invocation, services);
        break;
    case Command::Text:
        output = textCommand(invocation, services);
        break;
    case Command::Toggle:
    case Command::Show:
    case Command::Hide:
    case Command::Translate:
    case Command::Settings:
    case Command::History:
    case Command::Quit:
        output = remoteCommand(invocation, services);
        break;
    case Command::TestConnection:
        output = testConnectionCommand(invocation, services);
        break;
    case Command::Languages:
        output = languagesCommand(invocation, services);
        break;
    case Command::Export:
        output = exportCommand(invocation, services);
        break;
    case Command::Entries:
        output = entriesCommand(invocation, services);
        break;
    }
    if (!output) {
        printLine(stderr, output.error().description);
        return ExitCode::Failed;
    }
    if (!output->message.isEmpty())
        printLine(stderr, output->message);
    if (!output->answer.isEmpty())
        printLine(stdout, output->answer);
    return ExitCode::Done;
}

} // namespace

int runCommandLine(int argc, char *argv[], const ServiceHosts &hosts)
{
    const QStringList arguments = argumentsAfterName(argc, argv);
    int ownName = 1; // Qt would take options of its own out of the others
    const auto application = makeApplication(arguments.value(0) == commandName(Command::Image), ownName, argv);
    QCoreApplication::setApplicationName(u"lucentra"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(programVersion));

    // Nobody else waits for a command, so that it rather waits for the memory of phrases than knows nothing.
    Services services([](const QString &line) { printLine(stderr, line); }, {},
                      {.longest = 30s, .acceptsOutdated = false}, hosts);
    const auto invocation = parseCommandLine(arguments, services.texts());
    if (!invocation) {
        printLine(stderr, invocation.error().description);
        printLine(stderr, services.texts().localized(u"lucentra --help 列出所有指令"_s));
        return int(ExitCode::WrongUsage);
    }
    return int(run(*invocation, services));
}

} // namespace lucentra
