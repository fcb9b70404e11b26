#pragma once

#include "PrivateBus.h"

#include <QTest>

namespace lucentra {

/// A session bus and GNOME Keyring on it, in folders of the test's own. They end with their owner. While it lives the
/// process's environment points at them.
class PrivateKeyring
{
public:
    PrivateKeyring()
    {
        m_environment = QProcessEnvironment::systemEnvironment();
        for (const char *folder : {"home", "data", "run"}) {
            const QString path = m_folder.filePath(QLatin1StringView(folder));
            QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        m_environment.insert(QStringLiteral("HOME"), m_folder.filePath(QStringLiteral("home")));
        m_environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.filePath(QStringLiteral("data")));
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.filePath(QStringLiteral("run")));
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress());
        m_environment.remove(QStringLiteral("DISPLAY"));
        qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress().toLocal8Bit());
        // Also when the test crashes.
        m_keyring.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    }
    ~PrivateKeyring() { stopKeyring(); }

    QString busAddress() const { return m_bus.address(); }
    bool startBus() { return m_bus.start(); }
    void stopBus() { m_bus.stop(); }

    /// Starts the keyring with its default collection unlocked, or without making one.
    bool startKeyring(bool unlocked = true)
    {
        QStringList arguments{QStringLiteral("--foreground"), QStringLiteral("--components=secrets"),
                              QStringLiteral("--control-directory=") + m_folder.filePath(QStringLiteral("control"))};
        if (unlocked)
            arguments.append(QStringLiteral("--unlock"));
        m_keyring.setProcessEnvironment(m_environment);
        m_keyring.setStandardErrorFile(QProcess::nullDevice());
        m_keyring.start(QStringLiteral("gnome-keyring-daemon"), arguments);
        if (!m_keyring.waitForStarted())
            return false;
        m_keyring.write(password());
        m_keyring.closeWriteChannel();
        return QTest::qWaitFor([this] { return ownsSecrets(); }, 5000);
    }
    /// Unlocks the running keyring's default collection, as the user's answer would.
    bool unlock() const
    {
        QProcess tool;
        tool.setProcessEnvironment(m_environment);
        tool.start(QStringLiteral("/usr/bin/python3"),
                   {QStringLiteral(KEYRING_TOOL), QStringLiteral("unlock"), QString::fromLatin1(password())});
        return tool.waitForFinished(20000) && tool.exitCode() == 0;
    }
    void stopKeyring()
    {
        m_keyring.terminate();
        m_keyring.waitForFinished(5000);
    }
    qint64 keyringProcess() const { return m_keyring.processId(); }

    /// Runs a tool of the session; its standard output, or nothing after a failure.
    QByteArray run(const QString &program, const QStringList &arguments, const QByteArray &input = {}) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        process.waitForFinished(10000);
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                                       : QByteArray();
    }

    /// Calls the Secret Service itself, as another program of the session.
    QByteArray call(const QString &method, const QStringList &arguments) const
    {
        return run(QStringLiteral("gdbus"), QStringList{QStringLiteral("call"), QStringLiteral("--session"),
                                                        QStringLiteral("--dest=org.freedesktop.secrets"),
                                                        QStringLiteral("--object-path=/org/freedesktop/secrets"),
                                                        QStringLiteral("--method=") + method} +
                                                arguments);
    }

private:
    static QByteArray password() { return "password"; }

    bool ownsSecrets() const
    {
        return run(QStringLiteral("gdbus"),
                   {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest=org.freedesktop.DBus"),
                    QStringLiteral("--object-path=/org/freedesktop/DBus"),
                    QStringLiteral("--method=org.freedesktop.DBus.GetNameOwner"),
                    QStringLiteral("org.freedesktop.secrets")})
            .contains(':');
    }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    PrivateBus m_bus;
    QProcess m_keyring;
};

} // namespace lucentra
