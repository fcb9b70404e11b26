#pragma once

#include "AutoHide.h"
#include "BackdropRenewal.h"
#include "GlassView.h"
#include "ManualInputView.h"
#include "ManualInputViewModel.h"
#include "TranslationPass.h"
#include "TransparentWindow.h"

#include <QPointer>
#include <QThreadPool>

#include <memory>

namespace lucentra {

class HistoryManager;
class Services;
class X11Desktop;

/// The pane with everything that drives it: the pass, typed text and the picture of what is beneath. Closing the pane
/// only hides it.
class PaneShell : public QObject
{
public:
    PaneShell(Scheduler &scheduler, Services &services, X11Desktop &desktop, HistoryManager &history);
    ~PaneShell() override;

    TransparentWindow &window() { return m_window; }
    GlassView &view() { return *m_view; }

    std::function<void(bool shown)> onShown;

    void show();
    void hide() { m_window.orderOut(); }
    /// Hides the shown pane; shows a hidden or minimized one.
    void toggle();
    /// Shows the hidden pane; the shown one translates.
    void translateCurrentArea();
    /// Whether a key goes to the pane, and neither to a menu nor to an input method.
    bool isKeyWindow() const;
    void stop();

private:
    void wireDesktop();
    void wirePass();
    void wireManualInput();
    void wireBackdrop();
    void giveBackMemoryLater();
    bool isActive() const;
    void keepAbovePane(const QWindow *used);

    Scheduler &m_scheduler;
    Services &m_services;
    X11Desktop &m_desktop;
    HistoryManager &m_history;
    ManualInputViewModel m_manualInput;
    TransparentWindow m_window;
    GlassView *m_view;                           ///< belongs to the window
    QPointer<ManualInputView> m_manualInputView; ///< the pane's, while it takes typed text
    std::unique_ptr<ScheduledTask> m_memoryTask;
    QThreadPool m_captureWorker; ///< of the backdrop
    BackdropRenewal m_backdrop;
    AutoHide m_autoHide;
    std::unique_ptr<TranslationPass> m_pass;
};

} // namespace lucentra
