#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace lucentra {

/// An X server of the test's own, without a window manager; ends with its owner.
class VirtualScreen
{
public:
    explicit VirtualScreen(const QString &geometry = QStringLiteral("1280x800x24"), const QStringList &options = {})
    {
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start(QStringLiteral("Xvfb"),
                       QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                   QStringLiteral("0"), geometry, QStringLiteral("-noreset"),
                                   QStringLiteral("-nolisten"), QStringLiteral("tcp")} +
                           options);
        if (m_server.waitForStarted() && m_server.waitForReadyRead(10000))
            m_display = ':' + m_server.readAllStandardOutput().trimmed();
    }
    ~VirtualScreen()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }

    bool isRunning() const { return !m_display.isEmpty(); }
    /// Makes it the display of this program and of those that it starts. Returns whether it runs.
    bool use() const { return isRunning() && qputenv("DISPLAY", m_display); }

private:
    QProcess m_server;
    QByteArray m_display;
};

} // namespace lucentra
