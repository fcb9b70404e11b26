#pragma once

#include "Files.h"

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include <sys/prctl.h>

namespace lucentra {

/// A session bus that knows no installed services, in a folder of the test's own. It ends with its owner.
class PrivateBus
{
public:
    PrivateBus()
    {
        // Also when the test crashes.
        m_bus.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    }
    ~PrivateBus() { stop(); }

    QString address() const { return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus")); }

    bool start()
    {
        const QString configuration = m_folder.filePath(QStringLiteral("bus.conf"));
        writeFile(configuration, "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN' "
                                 "'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>"
                                 "<busconfig><type>session</type><listen>" +
                                     address().toLocal8Bit() +
                                     "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                                     "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
        m_bus.setStandardErrorFile(QProcess::nullDevice());
        m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + configuration,
                                                    QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        return m_bus.waitForStarted() && m_bus.waitForReadyRead();
    }

    void stop()
    {
        m_bus.terminate();
        m_bus.waitForFinished(5000);
    }

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
};

} // namespace lucentra
