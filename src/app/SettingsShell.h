#pragma once

#include "AutostartEntry.h"
#include "Callback.h"
#include "LaunchAtLogin.h"
#include "SettingsWindowController.h"

#include <functional>

namespace lucentra {

class HotkeyManager;
class MainMenu;
class Scheduler;
class Services;

/// The settings window with all that it stands on, wired to the running program.
class SettingsShell
{
public:
    /// What of the program the window acts on besides the stores.
    struct Program
    {
        Services &services;
        Scheduler &scheduler;
        HotkeyManager &hotkeys;
        MainMenu &menu;
        std::function<void()> registerHotkeys;
        std::function<void(bool showInDock)> applyDockPresence;
        std::function<QRect()> paneFrame; ///< empty while the pane is hidden
    };

    SettingsShell(const Program &program, DiagnosticLine diagnostics);

    SettingsWindowController &controller() { return m_controller; }

private:
    AutostartEntry m_autostart;
    LaunchAtLogin m_launchAtLogin;
    SettingsWindowController m_controller;
};

} // namespace lucentra
