#pragma once

#include "BackdropRenewal.h"
#include "GlassView.h"
#include "HistoryManager.h"
#include "HotkeyManager.h"
#include "Scheduler.h"
#include "Services.h"
#include "TranslationPass.h"
#include "TransparentWindow.h"
#include "X11Desktop.h"

#include <QAction>

#include <memory>

namespace lucentra {

/// The program with its pane: makes every object, wires the pane to the pass, and keeps them until it quits. Closing
/// the pane only hides it. Main thread only.
class AppDelegate : public QObject
{
public:
    explicit AppDelegate(DiagnosticLine diagnostics);
    ~AppDelegate() override;

    /// Starts up and shows the pane.
    void applicationDidFinishLaunching();
    /// Ends what is under way and completes what is to be stored. Called once, before the program ends.
    void applicationWillTerminate();

    /// Hides the shown pane; shows a hidden or minimized one.
    void toggleWindow();

private:
    void createGlassWindow();
    void wirePass();
    void wireBackdrop();
    void buildContextMenu();
    void wireHotkeys();
    bool isPaneKeyWindow() const;
    void retitle();

    EventLoopScheduler m_scheduler;
    Services m_services;
    HistoryManager m_history;
    X11Desktop m_desktop;
    HotkeyManager m_hotkeys;
    std::unique_ptr<TransparentWindow> m_window;
    GlassView *m_glassView = nullptr; ///< belongs to the window
    std::unique_ptr<TranslationPass> m_pass;
    std::unique_ptr<BackdropRenewal> m_backdrop;
    QAction *m_translateAction = nullptr;
    QAction *m_toggleAction = nullptr;
    QAction *m_quitAction = nullptr;
};

} // namespace lucentra
