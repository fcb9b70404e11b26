#pragma once

#include "OnDeviceTranslationService.h"
#include "Result.h"

#include <QIcon>
#include <QRect>
#include <QString>

#include <functional>

class QMenuBar;

namespace lucentra {

class KeychainStore;
class LaunchAtLogin;
class LocalizationManager;
class MainQueue;
class Scheduler;
class SettingsStore;

/// What the settings window stands on. Everything that is referred to outlives the window. The functions are called on
/// the main thread but for `onDeviceStatus`.
struct SettingsServices
{
    SettingsStore &settings;
    LocalizationManager &texts;
    Scheduler &scheduler;
    MainQueue &mainQueue;
    const KeychainStore &keychain;
    LaunchAtLogin &launchAtLogin;

    /// Sends a short sentence the way a pass does; completes once, on the main thread.
    std::function<void(std::function<void(Result<QString>)> completion)> testConnection;
    /// What translates on this machine. Called on a worker, for it may block.
    std::function<QList<OnDeviceServiceStatus>()> onDeviceStatus;
    /// Brings a changed "showInDock" into force.
    std::function<void(bool showInDock)> applyDockPresence;
    /// A combination is being recorded, or no longer: meanwhile the program's own hotkeys must be let go.
    std::function<void(bool isRecording)> hotkeyRecordingChanged;
    /// Whether the system refused the stored hotkey.
    std::function<bool()> isHotkeyRefused;
    std::function<void(QMenuBar &bar)> fillMenuBar;
    /// Where the pane lies on the screen, in points; empty while it is hidden. It floats above every window.
    std::function<QRect()> paneFrame;

    QString pagesFolder; ///< where the pages lie that ship with the program
    QIcon applicationIcon;
    QString version; ///< with its build number
};

} // namespace lucentra
