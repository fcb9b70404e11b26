#include "CommandLineProgram.h"

#include "CommandLine.h"
#include "Commands.h"
#include "RemoteCommands.h"
#include "Services.h"
#include "Settings.h"
#include "TranslationEngine.h"
#include "Version.h"

#include <QGuiApplication>
#include <QHash>

#include <condition_variable>
#include <cstdio>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include <unistd.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Returns false if not all of the text could be written.
bool print(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream) == size_t(bytes.size()) &&
           std::fflush(stream) == 0;
}

bool printLine(std::FILE *stream, const QString &line)
{
    return print(stream, line + u'\n');
}

/// Whether a character changes the direction of what follows it: the embeddings, overrides and isolates.
bool isDirectional(QChar c)
{
    return (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069');
}

/// For a terminal, which would obey the control characters in a server's answer or in a recognized text.
QString withoutControlCharacters(QString text)
{
    for (QChar &character : text) {
        const bool isControl = character.category() == QChar::Other_Control && character != u'\n' && character != u'\t';
        if (isControl || isDirectional(character))
            character = QChar::ReplacementCharacter;
    }
    return text;
}

void printMessage(const QString &line)
{
    printLine(stderr, withoutControlCharacters(line));
}

/// Other programs and files get the answer unchanged.
bool printAnswer(const QString &answer)
{
    return printLine(stdout, ::isatty(STDOUT_FILENO) ? withoutControlCharacters(answer) : answer);
}

ExitCode answered(bool isPrinted, const LocalizationManager &texts)
{
    if (isPrinted)
        return ExitCode::Done;
    printMessage(texts.localized(u"無法寫入標準輸出"_s));
    return ExitCode::Failed;
}

/// Drawing pictures needs fonts and therefore a platform plug-in, but no window system.
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

/// Prints what a command waits for if the wait is long.
class WaitingNotice
{
public:
    WaitingNotice(Services &services, std::chrono::milliseconds delay)
        : m_thread([this, &services, delay](const std::stop_token &stop) {
            std::unique_lock lock(m_mutex);
            m_ended.wait_for(lock, stop, delay, [] { return false; });
            if (!stop.stop_requested() && services.isCollectingPhrases())
                printMessage(services.texts().localized(u"正在收集這部電腦上的譯文…"_s));
        })
    {
    }

private:
    std::mutex m_mutex;
    std::condition_variable_any m_ended;
    std::jthread m_thread; ///< last, so that it ends first
};

bool mayWaitForPhrases(const Invocation &invocation, Services &services)
{
    const bool usesEngine =
        invocation.command == u"text" || invocation.command == u"image" || invocation.command == u"test-connection";
    const qint64 engine =
        invocation.engine ? *invocation.engine : services.settings().read(settings::translationEngine);
    return invocation.command == u"languages" || (usesEngine && engine == qint64(TranslationEngine::apple));
}

Result<CommandOutput> runCommand(const Invocation &invocation, Services &services)
{
    using Run = Result<CommandOutput> (*)(const Invocation &, Services &);
    static const QHash<QStringView, Run> runs{{u"recognize", recognizeCommand},
                                              {u"image", imageCommand},
                                              {u"text", textCommand},
                                              {u"test-connection", testConnectionCommand},
                                              {u"languages", languagesCommand},
                                              {u"models", modelsCommand},
                                              {u"models install", installModelCommand},
                                              {u"models remove", removeModelCommand},
                                              {u"models run", runModelCommand},
                                              {u"doctor", doctorCommand},
                                              {u"export", exportCommand},
                                              {u"entries", entriesCommand}};
    return runs.value(invocation.command, remoteCommand)(invocation, services);
}

ExitCode run(const Invocation &invocation, Services &services)
{
    if (invocation.command == u"help")
        return answered(print(stdout, helpPage(services.texts())), services.texts());
    if (invocation.command == u"version")
        return answered(printLine(stdout, u"lucentra "_s + QCoreApplication::applicationVersion()), services.texts());
    std::optional<WaitingNotice> notice;
    if (mayWaitForPhrases(invocation, services)) {
        services.prepareOnDevice(*qApp);
        notice.emplace(services, 1s);
    }
    const auto output = runCommand(invocation, services);
    notice.reset();
    if (!output) {
        printMessage(output.error().description);
        return ExitCode::Failed;
    }
    if (!output->message.isEmpty())
        printMessage(output->message);
    return answered(output->answer.isEmpty() || printAnswer(output->answer), services.texts());
}

} // namespace

int runCommandLine(int argc, char *argv[])
{
    const QStringList arguments = argumentsAfterName(argc, argv);
    int ownName = 1; // Qt would take options of its own out of the others
    const auto application = makeApplication(arguments.value(0) == u"image", ownName, argv);
    QCoreApplication::setApplicationName(u"lucentra"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(programVersion));

    // The report says in the user's language what the keyring answers.
    const bool isReport = arguments.value(0) == u"doctor";
    const auto printDiagnostic = [isReport](const QString &line) {
        if (!isReport || !line.startsWith(u"Keychain "_s))
            printMessage(line);
    };
    // A command can wait for the phrases; the pane can't.
    Services services(printDiagnostic, {}, {.longest = 30s, .acceptsOutdated = false});
    if (arguments == QStringList{QLatin1StringView(unansweredOption)}) {
        printMessage(services.texts().localized(u"Lucentra 沒有執行這個指令。"_s));
        return int(ExitCode::Failed);
    }
    const auto invocation = parseCommandLine(arguments, services.texts());
    if (!invocation) {
        printMessage(invocation.error().description);
        printMessage(services.texts().localized(u"lucentra --help 列出所有指令"_s));
        return int(ExitCode::WrongUsage);
    }
    return int(run(*invocation, services));
}

} // namespace lucentra
