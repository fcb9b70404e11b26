#include "RemoteControl.h"

#include "CommandLine.h"
#include "LocalizationManager.h"
#include "PaneProgram.h"
#include "RemoteCommands.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QProcess>
#include <QThread>

#include <csignal>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr QLatin1StringView serviceName(remoteName);
constexpr QLatin1StringView objectPath(remotePath);
constexpr QLatin1StringView ownInterface(remoteName);
constexpr auto applicationInterface = "org.freedesktop.Application"_L1;

/// How long the program may take to appear on the bus.
constexpr auto startPatience = 20s;
/// How long a program that is about to end may take for storing.
constexpr auto endPatience = 5s;

Failure failure(const QString &description)
{
    return {.domain = u"RemoteControl"_s, .code = int(ExitCode::Failed), .description = description};
}

/// Starts the program and waits until it can be called. It outlives this process and keeps none of its output streams
/// open.
bool start(const QDBusConnection &bus)
{
    QProcess program;
    program.setProgram(QCoreApplication::applicationFilePath());
    program.setArguments({QLatin1StringView(waitForCommandOption)});
    program.setStandardInputFile(QProcess::nullDevice());
    program.setStandardOutputFile(QProcess::nullDevice());
    program.setStandardErrorFile(QProcess::nullDevice());
    qint64 identifier = 0;
    if (!program.startDetached(&identifier))
        return false;
    const QDeadlineTimer deadline(startPatience);
    while (!isProgramRunning(bus)) {
        const bool hasEnded = ::kill(pid_t(identifier), 0) != 0;
        if (hasEnded || deadline.hasExpired())
            return false;
        QThread::msleep(20);
    }
    return true;
}

/// The method of a command on the session bus.
QString busMember(std::string_view command)
{
    return QString::fromStdString(remoteMember(command));
}

/// The command of a call to either interface; empty if there is none.
QString commandOf(const QDBusMessage &message)
{
    const bool isAction = message.interface() == applicationInterface;
    if (isAction && message.member() == "Activate"_L1)
        return u"show"_s;
    const QString action =
        message.member() == "ActivateAction"_L1 ? message.arguments().value(0).toString() : QString();
    for (const std::string_view command : remoteCommands) {
        const QString name = QLatin1StringView(command.data(), qsizetype(command.size()));
        if (isAction ? action == name : message.member() == busMember(command))
            return name;
    }
    return {};
}

} // namespace

RemoteControl::RemoteControl(const QDBusConnection &bus)
    : m_bus(bus)
{
}

RemoteControl::~RemoteControl()
{
    m_bus.unregisterService(serviceName);
    m_bus.unregisterObject(objectPath);
}

RemoteControl::Claim RemoteControl::claim()
{
    if (!m_bus.isConnected())
        return Claim::NoBus;
    // Before the name, since callers that wait for the name call the object at once.
    m_bus.registerVirtualObject(objectPath, this);
    const auto reply = m_bus.interface()->registerService(serviceName, QDBusConnectionInterface::DontQueueService,
                                                          QDBusConnectionInterface::DontAllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered ? Claim::Ours : Claim::Taken;
}

RemoteControl::Claim RemoteControl::moveTo(const QDBusConnection &bus)
{
    m_bus = bus;
    return claim();
}

QString RemoteControl::introspect(const QString &) const
{
    QString methods;
    for (const std::string_view command : remoteCommands)
        methods += u"<method name=\""_s + busMember(command) + u"\"/>"_s;
    return u"<interface name=\""_s + ownInterface + u"\">"_s + methods + u"</interface>"_s +
           uR"(<interface name="org.freedesktop.Application">
<method name="Activate"><arg type="a{sv}" direction="in"/></method>
<method name="ActivateAction"><arg type="s" direction="in"/><arg type="av" direction="in"/><arg type="a{sv}" direction="in"/></method>
</interface>)"_s;
}

bool RemoteControl::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString command = commandOf(message);
    if (command.isEmpty())
        return false; // the bus answers that there is no such method
    if (!onCommand)
        connection.send(message.createErrorReply(QDBusError::ServiceUnknown, serviceName));
    else if (onCommand(command))
        connection.send(message.createReply());
    else
        connection.send(message.createErrorReply(QDBusError::NotSupported, message.member()));
    return true;
}

namespace {

QDBusMessage call(QStringView command, const QDBusConnection &bus)
{
    auto message = QDBusMessage::createMethodCall(serviceName, objectPath, ownInterface,
                                                  busMember(command.toString().toStdString()));
    message.setAutoStartService(false);
    return bus.call(message, QDBus::Block, remotePatience);
}

/// Whether a command arrived while the program was about to end, as after `quit`. Waits until it has ended.
bool hasJustEnded(const QDBusMessage &reply, const QDBusConnection &bus)
{
    const auto error = QDBusError(reply).type();
    if (error == QDBusError::NotSupported || error == QDBusError::UnknownMethod)
        return false; // it runs and has answered
    const QDeadlineTimer deadline(endPatience);
    while (isProgramRunning(bus) && !deadline.hasExpired())
        QThread::msleep(20);
    return !isProgramRunning(bus);
}

} // namespace

bool isProgramRunning(const QDBusConnection &bus)
{
    return bus.isConnected() && bus.interface()->isServiceRegistered(serviceName);
}

Result<void> sendRemoteCommand(QStringView command, const QDBusConnection &bus, const LocalizationManager &texts)
{
    if (!bus.isConnected())
        return tl::unexpected(failure(texts.localized(u"找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。"_s)));
    if (!isProgramRunning(bus)) {
        if (!startsProgram(command))
            return tl::unexpected(failure(texts.localized(u"Lucentra 沒有在執行。"_s)));
        if (!start(bus))
            return tl::unexpected(failure(texts.localized(u"Lucentra 無法啟動。"_s)));
    }
    QDBusMessage reply = call(command, bus);
    if (reply.type() == QDBusMessage::ErrorMessage && startsProgram(command) && hasJustEnded(reply, bus) && start(bus))
        reply = call(command, bus);
    if (QDBusError(reply).type() == QDBusError::NotSupported) // only live translation isn't available everywhere
        return tl::unexpected(failure(texts.localized(u"即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）"_s)));
    if (reply.type() == QDBusMessage::ErrorMessage)
        return tl::unexpected(failure(texts.localized(u"Lucentra 沒有執行這個指令。"_s)));
    return {};
}

} // namespace lucentra
