#pragma once

#include "AutoHide.h"
#include "Callback.h"
#include "FirstTips.h"
#include "GlassView.h"
#include "LiveTranslation.h"
#include "ManualInputView.h"
#include "ManualInputViewModel.h"
#include "PaneControls.h"
#include "PortalDisplayOptions.h"
#include "TranslationPass.h"
#include "TransparentWindow.h"
#include "UPowerState.h"

#include <QPointer>

#include <memory>

namespace lucentra {

class Desktop;
class HistoryManager;
class Services;
class SessionBus;
struct TextLine;

/// The pane with everything that drives it: the pass, typed text and the picture of what is beneath. Closing the pane
/// only hides it.
class PaneShell : public QObject
{
public:
    PaneShell(Scheduler &scheduler, Services &services, Desktop &desktop, SessionBus &bus, HistoryManager &history);
    ~PaneShell() override;

    TransparentWindow &window() { return m_window; }
    GlassView &view() { return *m_view; }
    PaneControls &controls() { return m_controls; }

    Callback<bool> onShown;

    /// Makes what a pass needs, unless that is done. A pass does it, too; it takes longer than showing the pane.
    void prepareEngines();
    /// Explains the pane to a new user.
    void explain(FirstTips::Circumstances circumstances);
    FirstTips &tips() { return *m_tips; } ///< after `explain`

    void show();
    void hide() { m_window.orderOut(); }
    /// Hides the shown pane; shows a hidden or minimized one.
    void toggle();
    /// Shows the hidden pane; the shown one translates.
    void translateCurrentArea();
    /// Whether a key would go to the pane, not to a menu or an input method.
    bool isKeyWindow() const;
    void stop();
    /// Whether live translation is available on this desktop.
    bool canBeLive() const;

private:
    void prepareOnDevice();
    void wireDesktop();
    void wirePass();
    void wireManualInput();
    void wireBackdrop();
    void wireLive();
    void followBeneath();
    void showBeneath(const ScreenFrame &frame);
    void giveBackMemoryLater();
    bool recommendsParagraphs(const QList<TextLine> &lines, const QSizeF &imageSize) const;
    bool isActive() const;
    void keepAbovePane(const QWindow *used);

    Scheduler &m_scheduler;
    Services &m_services;
    Desktop &m_desktop;
    HistoryManager &m_history;
    PortalDisplayOptions m_displayOptions;
    ManualInputViewModel m_manualInput;
    TransparentWindow m_window;
    GlassView *m_view; ///< belongs to the window
    PaneControls m_controls;
    std::unique_ptr<FirstTips> m_tips;
    QPointer<ManualInputView> m_manualInputView; ///< the pane's, while it takes typed text
    bool m_areEnginesPrepared = false;
    std::unique_ptr<ScheduledTask> m_memoryTask;
    AutoHide m_autoHide;
    std::unique_ptr<TranslationPass> m_pass;
    UPowerState m_power;
    std::unique_ptr<LiveTranslation> m_live; ///< null if this desktop can't be followed
    std::unique_ptr<ScheduledTask> m_nextBackdrop;
    QRect m_unseenBeneath; ///< what has changed since the glass shows it; pixels
    QImage m_waitingBackdrop;
};

} // namespace lucentra
