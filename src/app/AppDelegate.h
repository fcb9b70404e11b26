#pragma once

#include "AutoHide.h"
#include "BackdropRenewal.h"
#include "CommandLine.h"
#include "GlassView.h"
#include "HistoryManager.h"
#include "HistoryWindowController.h"
#include "HotkeyManager.h"
#include "MainMenu.h"
#include "ManualInputView.h"
#include "ManualInputViewModel.h"
#include "PaneAtStart.h"
#include "Scheduler.h"
#include "Services.h"
#include "SettingsShell.h"
#include "ShellActions.h"
#include "StatusItem.h"
#include "ToolkitTexts.h"
#include "TranslationPass.h"
#include "TransparentWindow.h"
#include "X11Desktop.h"

#include <QPointer>
#include <QThreadPool>

#include <memory>

namespace lucentra {

/// The program with its pane: makes every object, wires the pane to the pass, and keeps them until it quits. Closing
/// the pane only hides it.
class AppDelegate : public QObject
{
public:
    AppDelegate(Scheduler &scheduler, SessionBus &bus, const DiagnosticLine &diagnostics);
    ~AppDelegate() override;

    /// Starts up, and shows the pane unless it is to wait for a command.
    void applicationDidFinishLaunching(PaneAtStart paneAtStart);
    /// Closes the windows and ends what is under way. Called once, before `completeStoring` and the program's end.
    void applicationWillTerminate();
    /// Brings what is to be stored to the disk, and tells nobody of it: the windows may be no more.
    void completeStoring();

    /// Hides the shown pane; shows a hidden or minimized one.
    void toggleWindow();
    /// Carries out a command that came over the bus; false where there is no such thing.
    bool perform(Invocation::Command command);

private:
    void createGlassWindow();
    void wirePass();
    void giveBackMemoryLater();
    void wireManualInput();
    void wireBackdrop();
    void fillActions();
    void keepAbovePane(const QWindow *used);
    void openSettings();
    HistoryWindowController &historyWindow();
    void wireHotkeys();
    void observeNotifications();
    void registerHotkeys();
    bool isPaneActive() const;
    bool isPaneKeyWindow() const;
    void refreshLocalizedTitles();
    void showPane();
    void paneShownOrHidden(bool shown);
    void tellOfMissingTray();

    const DiagnosticLine m_diagnostics;
    Scheduler &m_scheduler;
    ToolkitTexts m_toolkitTexts;
    Services m_services;
    HistoryManager m_history;
    X11Desktop m_desktop;
    QThreadPool m_captureWorker; ///< of the backdrop
    HotkeyManager m_hotkeys;
    ManualInputViewModel m_manualInput;
    std::unique_ptr<TransparentWindow> m_window;
    GlassView *m_glassView = nullptr;            ///< belongs to the window
    QPointer<ManualInputView> m_manualInputView; ///< the pane's, while it takes typed text
    std::unique_ptr<TranslationPass> m_pass;
    std::unique_ptr<ScheduledTask> m_memoryTask;
    std::unique_ptr<BackdropRenewal> m_backdrop;
    ShellActions m_actions;
    MainMenu m_mainMenu;
    StatusItem m_statusItem;
    AutoHide m_autoHide;
    std::unique_ptr<SettingsShell> m_settingsShell;           ///< made when it is first opened
    std::unique_ptr<HistoryWindowController> m_historyWindow; ///< made when it is first needed
    bool m_hasToldOfMissingTray = false;
};

} // namespace lucentra
