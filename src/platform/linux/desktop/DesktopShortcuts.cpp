#include "DesktopShortcuts.h"

#include "GObjectPointer.h"
#include "LauncherPath.h"

#include <QList>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto mediaKeys = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customKeybinding = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr auto customKeybindings = "custom-keybindings";
const auto entryFolder = u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/"_s;

struct ShortcutEntry
{
    QString path;
    QString command; ///< of the program
};

const std::array<ShortcutEntry, 2> ourEntries{
    {{entryFolder + u"lucentra-toggle/"_s, u"toggle"_s}, {entryFolder + u"lucentra-translate/"_s, u"translate"_s}}};

using Settings = GObjectPointer<GSettings>;

bool hasSchema(const char *name)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    const Owned<GSettingsSchema, g_settings_schema_unref> schema(
        source ? g_settings_schema_source_lookup(source, name, true) : nullptr);
    return schema != nullptr;
}

QStringList listedEntries(GSettings *settings)
{
    const Owned<char *, g_strfreev> paths(g_settings_get_strv(settings, customKeybindings));
    QStringList listed;
    for (char **path = paths.get(); path && *path; ++path)
        listed.append(QString::fromUtf8(*path));
    return listed;
}

void listEntries(GSettings *settings, const QStringList &listed)
{
    QList<QByteArray> bytes;
    for (const QString &path : listed)
        bytes.append(path.toUtf8());
    QList<const char *> pointers;
    for (const QByteArray &path : bytes)
        pointers.append(path.constData());
    pointers.append(nullptr);
    g_settings_set_strv(settings, customKeybindings, pointers.constData());
}

Settings entrySettings(const ShortcutEntry &entry)
{
    return Settings(g_settings_new_with_path(customKeybinding, entry.path.toUtf8().constData()));
}

} // namespace

bool areDesktopShortcutsOffered()
{
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && desktop.split(u':').contains(u"GNOME"_s) &&
           hasSchema(mediaKeys) && hasSchema(customKeybinding);
}

bool areDesktopShortcutsSet()
{
    const Settings settings(g_settings_new(mediaKeys));
    return listedEntries(settings.get()).contains(ourEntries.front().path);
}

void setDesktopShortcuts(const QString &toggleKeys, const QString &translateKeys)
{
    const Settings settings(g_settings_new(mediaKeys));
    QStringList listed = listedEntries(settings.get());
    const QString program = launcherPath();
    for (const ShortcutEntry &entry : ourEntries) {
        const Settings values = entrySettings(entry);
        const QString &keys = entry.command == u"toggle" ? toggleKeys : translateKeys;
        const QString command = u"'%1' %2"_s.arg(QString(program).replace(u'\'', u"'\\''"_s), entry.command);
        g_settings_set_string(values.get(), "name", ("Lucentra: " + entry.command.toUtf8()).constData());
        g_settings_set_string(values.get(), "command", command.toUtf8().constData());
        g_settings_set_string(values.get(), "binding", gnomeAccelerator(keys).toUtf8().constData());
        if (!listed.contains(entry.path))
            listed.append(entry.path);
    }
    listEntries(settings.get(), listed);
    g_settings_sync();
}

void removeDesktopShortcuts()
{
    const Settings settings(g_settings_new(mediaKeys));
    QStringList listed = listedEntries(settings.get());
    for (const ShortcutEntry &entry : ourEntries) {
        listed.removeAll(entry.path);
        const Settings values = entrySettings(entry);
        for (const char *key : {"name", "command", "binding"})
            g_settings_reset(values.get(), key);
    }
    listEntries(settings.get(), listed);
    g_settings_sync();
}

QString gnomeAccelerator(const QString &keys)
{
    QStringList parts = keys.split(u'+', Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return {};
    QString key = parts.takeLast();
    if (key.size() == 1)
        key = key.toLower();
    QString accelerator;
    for (const QString &modifier : std::as_const(parts))
        accelerator += u'<' + (modifier == u"Meta" ? u"Super"_s : modifier) + u'>';
    return accelerator + key;
}

std::function<void()> shortcutSettings()
{
    struct Program
    {
        QStringView desktop;
        QString name;
        QString page;
    };
    static const std::array programs{Program{u"GNOME", u"gnome-control-center"_s, u"keyboard"_s},
                                     Program{u"KDE", u"systemsettings"_s, u"kcm_keys"_s},
                                     Program{u"KDE", u"kcmshell6"_s, u"kcm_keys"_s},
                                     Program{u"KDE", u"kcmshell5"_s, u"kcm_keys"_s}};
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    for (const Program &program : programs) {
        const QString path = QStandardPaths::findExecutable(program.name);
        if (desktops.contains(program.desktop) && !path.isEmpty())
            return [path, page = program.page] { QProcess::startDetached(path, {page}); };
    }
    return {};
}

QString shortcutConfigurationLine()
{
    if (!qEnvironmentVariableIsEmpty("SWAYSOCK"))
        return u"bindsym Mod1+t exec lucentra toggle"_s;
    if (!qEnvironmentVariableIsEmpty("HYPRLAND_INSTANCE_SIGNATURE"))
        return u"bind = ALT, T, exec, lucentra toggle"_s;
    return {};
}

} // namespace lucentra
