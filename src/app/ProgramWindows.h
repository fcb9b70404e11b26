#pragma once

#include "AutostartEntry.h"
#include "Callback.h"
#include "HistoryWindowController.h"
#include "SettingsWindowController.h"

#include <functional>
#include <memory>

namespace lucentra {

class HotkeyManager;
class MainMenu;
class PaneWindowHints;
class Services;
class SettingsStore;

/// Adds custom shortcuts to the desktop that call the program with the stored hotkey, or removes them.
void applyDesktopShortcuts(const SettingsStore &settings, bool isOn);

/// The program's windows besides the pane: settings and history. Each is made when it is first needed.
class ProgramWindows
{
public:
    struct Program
    {
        Services &services;
        Scheduler &scheduler;
        HistoryManager &history;
        HotkeyManager &hotkeys;
        MainMenu &menu;
        PaneWindowHints &windowHints;
        std::function<void(bool showInDock)> applyDockPresence;
        std::function<QRect()> paneFrame; ///< empty while the pane is hidden
        DiagnosticLine diagnostics;
    };

    explicit ProgramWindows(Program program);

    void openSettings();
    /// Opens the settings where translation models are downloaded.
    void openModels();
    void openHistory() { historyWindow().showWindow(); }
    /// Opens the history at the newest entry with these two among its lines.
    void openHistory(const QString &source, const QString &translation);
    void refreshTexts();
    /// Saves what was typed last.
    void close();

private:
    SettingsServices settingsServices();
    HistoryWindowController &historyWindow();

    const Program m_program;
    AutostartEntry m_autostart;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<HistoryWindowController> m_historyWindow;
};

} // namespace lucentra
