#pragma once

#include "Desktop.h"
#include "HistoryManager.h"
#include "HotkeyManager.h"
#include "MainMenu.h"
#include "PaneProgram.h"
#include "PaneShell.h"
#include "ProgramWindows.h"
#include "Services.h"
#include "SessionBus.h"
#include "ShellActions.h"
#include "StatusItem.h"
#include "ToolkitLanguage.h"

#include <memory>
#include <optional>

namespace lucentra {

/// The program with its pane: makes every object, starts and stops it, and carries out commands.
class AppDelegate : public QObject
{
public:
    AppDelegate(Scheduler &scheduler, SessionBus &bus, const DiagnosticLine &diagnostics);

    /// Starts up, and shows the pane unless it is to wait for a command.
    void applicationDidFinishLaunching(PaneAtStart paneAtStart);
    /// Closes the windows and ends what is under way. Called once, before `completeStoring` and the program's end.
    void applicationWillTerminate();
    /// Writes what is to be stored to the disk and notifies nobody, since the windows may be gone.
    void completeStoring();

    /// Carries out a command that came over the bus, one of RemoteCommands.h. Returns false if it isn't available.
    bool perform(QStringView command);
    /// After the start.
    bool isPaneShown() { return m_pane->window().isShown(); }

private:
    /// What can wait until the pane is seen. Further calls do nothing.
    void finishLaunching();
    QRect paneFrame();
    void explainPane();
    /// By the hotkey, or by the command that a desktop's key runs.
    void toggleByKey();
    /// Returns false if this desktop doesn't allow translations to follow the screen.
    bool setLive(bool isLive);
    void refreshLocalizedTitles();
    /// The keys that show and hide the pane from anywhere; empty if there are none.
    QString toggleKeys();
    void tellOfMissingTray();

    Scheduler &m_scheduler;
    ToolkitLanguage m_toolkitLanguage;
    Services m_services;
    HistoryManager m_history;
    SessionBus &m_bus;
    const std::unique_ptr<Desktop> m_desktop;
    HotkeyManager m_hotkeys;
    std::optional<PaneShell> m_pane; ///< made at the start
    ShellActions m_actions;
    MainMenu m_mainMenu;
    StatusItem m_statusItem;
    ProgramWindows m_windows;
    bool m_isLaunched = false;
    std::unique_ptr<ScheduledTask> m_finish;
    bool m_hasToldOfMissingTray = false;
};

} // namespace lucentra
