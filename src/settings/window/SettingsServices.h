#pragma once

#include "Callback.h"
#include "OnDeviceTranslationService.h"
#include "Result.h"

#include <QIcon>
#include <QRect>
#include <QString>

#include <functional>

class QMenuBar;

namespace lucentra {

class HotkeyManager;
class KeychainStore;
class LocalizationManager;
class LoginItem;
class MainQueue;
class ModelInstallation;
class Scheduler;
class SettingsStore;
class TranslationModels;

/// The services of the settings window. All functions except `onDeviceStatus` are called on the main thread.
struct SettingsServices
{
    SettingsStore &settings;
    LocalizationManager &texts;
    Scheduler &scheduler;
    MainQueue &mainQueue;
    const KeychainStore &keychain;
    LoginItem &loginItem;
    HotkeyManager &hotkeys;
    const DiagnosticLine &diagnostics;
    TranslationModels &models; ///< called on a worker
    ModelInstallation &modelInstallation;

    /// Sends a short sentence like a pass does. Completes once, on the main thread.
    std::function<void(std::function<void(Result<QString>)> completion)> testConnection;
    /// The translators on this machine. Called on a worker, since it may block.
    std::function<QList<OnDeviceServiceStatus>()> onDeviceStatus;
    /// Applies a changed "showInDock".
    std::function<void(bool showInDock)> applyDockPresence;
    /// Whether custom shortcuts of the desktop call the program, and adds or removes them. Empty if the desktop has
    /// none.
    std::function<bool()> areDesktopShortcutsSet;
    std::function<void(bool)> setDesktopShortcuts;
    /// A line for the configuration of a desktop that passes no hotkeys on to programs; empty on others.
    QString shortcutConfiguration;
    std::function<void(QMenuBar &bar)> fillMenuBar;
    /// The pane's place on the screen in points, above all other windows; empty while it is hidden.
    std::function<QRect()> paneFrame;

    QString pagesFolder; ///< of the pages that ship with the program
    QIcon applicationIcon;
    QString version; ///< with its build number
};

} // namespace lucentra
