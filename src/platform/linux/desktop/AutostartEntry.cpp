#include "AutostartEntry.h"

#include "GObjectPointer.h"
#include "LauncherPath.h"
#include "PrivateFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QString entryIn(const QString &configFolder)
{
    return configFolder + u"/autostart/com.tarnby.lucentra.desktop"_s;
}

Failure failure(const QString &description)
{
    return {.domain = u"LoginItem"_s, .code = 1, .description = description};
}

/// Whether an entry starts something; nullopt if there is none. An entry whose program is gone doesn't.
std::optional<bool> isInForce(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    constexpr auto enabledKey = "X-GNOME-Autostart-enabled";
    const GObjectPointer<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
    return entry && !g_desktop_app_info_get_is_hidden(entry.get()) &&
           (!g_desktop_app_info_has_key(entry.get(), enabledKey) ||
            g_desktop_app_info_get_boolean(entry.get(), enabledKey));
}

QString entryHead()
{
    return u"[Desktop Entry]\nType=Application\nName=Lucentra\nName[zh]=Lucentra｜澄镜通\n"
           u"Name[zh_TW]=Lucentra｜澄鏡通\nName[zh_HK]=Lucentra｜澄鏡通\n"_s;
}

/// A path as one argument of an Exec line: quoted for the command, and once more for the file.
QString quotedForExec(const QString &path)
{
    QString quoted;
    for (const QChar character : path) {
        if (character == u'"' || character == u'`' || character == u'$' || character == u'\\')
            quoted += u"\\\\"_s;
        if (character == u'\\')
            quoted += u'\\';
        if (character == u'%')
            quoted += u'%';
        quoted += character;
    }
    return u'"' + quoted + u'"';
}

} // namespace

AutostartEntry::AutostartEntry(const QString &configHome, const QStringList &systemConfigFolders, QString executable)
    : m_path(entryIn(configHome))
    , m_systemPaths([&] {
        QStringList paths;
        for (const QString &folder : systemConfigFolders)
            paths.append(entryIn(folder));
        return paths;
    }())
    , m_executable(std::move(executable))
{
}

AutostartEntry AutostartEntry::ofUser()
{
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    const QString own = folders.takeFirst();
    return {own, folders, launcherPath()};
}

bool AutostartEntry::isEnabled() const
{
    if (const auto own = isInForce(m_path))
        return *own;
    for (const QString &path : m_systemPaths) {
        if (const auto system = isInForce(path))
            return *system;
    }
    return false;
}

Result<void> AutostartEntry::setEnabled(bool enabled)
{
    if (enabled == isEnabled())
        return {};
    if (enabled)
        return write(entryHead() + u"Exec="_s + quotedForExec(m_executable) +
                     u"\nIcon=com.tarnby.lucentra\nTerminal=false\nX-GNOME-Autostart-enabled=true\n"_s);
    const bool isSystems = std::any_of(m_systemPaths.begin(), m_systemPaths.end(),
                                       [](const QString &path) { return QFileInfo(path).isFile(); });
    if (isSystems)
        return write(entryHead() + u"Hidden=true\n"_s);
    QFile file(m_path);
    if (!file.remove())
        return tl::unexpected(failure(m_path + u": "_s + file.errorString()));
    return {};
}

Result<void> AutostartEntry::write(const QString &content)
{
    createFolderOf(m_path);
    const auto written = writePrivateFile(m_path, content.toUtf8());
    if (!written)
        return tl::unexpected(failure(m_path + u": "_s + written.error().description));
    return {};
}

} // namespace lucentra
