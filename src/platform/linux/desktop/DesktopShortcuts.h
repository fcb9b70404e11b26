#pragma once

#include <QString>

#include <functional>

namespace lucentra {

// GNOME passes no global hotkeys on to programs in a Wayland session. Its own shortcuts can run commands, though: these
// functions manage the program's entries among them. Other entries are never changed.

/// Whether this session is one of GNOME on Wayland whose shortcuts can be set.
bool areDesktopShortcutsOffered();
/// Whether the entry that shows and hides the pane exists.
bool areDesktopShortcutsSet();
/// Makes or changes the entries. Keys are given as "Alt+T".
void setDesktopShortcuts(const QString &toggleKeys, const QString &translateKeys);
void removeDesktopShortcuts();

/// GNOME's own part of the desktop's portal, and its interface for global shortcuts, which it has from GNOME 48. Where
/// desktop shortcuts are offered, only this part gets keys. If another desktop is installed as well, its services answer
/// in GNOME, too, but no key ever reaches them.
inline constexpr QLatin1StringView gnomePortal{"org.freedesktop.impl.portal.desktop.gnome"};
inline constexpr QLatin1StringView gnomePortalShortcuts{"org.freedesktop.impl.portal.GlobalShortcuts"};

/// The accelerator of a combination like "Alt+T" as GNOME writes it: "<Alt>t".
QString gnomeAccelerator(const QString &keys);

/// Opens the desktop's settings of shortcuts. Empty on desktops without such a program.
std::function<void()> shortcutSettings();

/// The line that makes a shortcut in the configuration file of this session's compositor, such as sway. Empty if it
/// has no such file.
QString shortcutConfigurationLine();

} // namespace lucentra
