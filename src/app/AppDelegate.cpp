#include "AppDelegate.h"

#include "DesktopNotice.h"
#include "DockPresence.h"
#include "InterfaceFont.h"
#include "Memory.h"
#include "Settings.h"
#include "TextRecognition.h"
#include "TextRecognizer.h"
#include "VirtualKeys.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>
#include <QThreadPool>
#include <QWindow>

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How long after the first picture the recognizer's models are loaded, so that they don't hold it up.
constexpr auto warmUpDelay = 300ms;

/// How long after a pass has begun what its workers took is given back.
constexpr auto memoryDelay = 5s;

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

AppDelegate::AppDelegate(Scheduler &scheduler, SessionBus &bus, const DiagnosticLine &diagnostics)
    : m_diagnostics(diagnostics)
    , m_scheduler(scheduler)
    , m_services(diagnostics, {.copy = copyToClipboard,
                               .record = [this](const QString &original,
                                                const QString &translation) { m_history.add(original, translation); }})
    , m_history(HistoryManager::userFilePath(), m_services.mainQueue(), diagnostics)
    , m_desktop(m_scheduler, bus)
    , m_hotkeys(
          m_services.settings(), m_desktop.hotkeys, m_services.mainQueue(), [this] { return isPaneKeyWindow(); },
          diagnostics)
    , m_manualInput(m_scheduler, m_services.mainQueue(), copyToClipboard)
    , m_mainMenu(m_services.texts(), m_actions)
    , m_statusItem(m_services.texts(), m_actions, m_scheduler, [this] { return m_desktop.hasTray(); })
    , m_autoHide(
          m_scheduler,
          {.isPaneActive = [this] { return isPaneActive(); },
           .hasInputFocus = [this] { return m_desktop.windowHints.hasInputFocus(*m_window->windowHandle()); },
           .isPointerInUse =
               [this] { return QApplication::activePopupWidget() || m_desktop.windowHints.isPointerButtonDown(); }},
          [this] {
              if (m_services.settings().read(settings::autoHide))
                  m_window->orderOut();
          })
{
}

AppDelegate::~AppDelegate()
{
    m_pass.reset(); // waits for its workers, which use the rest
}

void AppDelegate::applicationDidFinishLaunching(PaneAtStart paneAtStart)
{
    m_toolkitTexts.use(m_services.texts().resolvedLanguageCode());
    useInterfaceFont(m_services.texts().resolvedLanguageCode());
    m_services.texts().syncTargetLanguage();
    createGlassWindow();
    wirePass();
    wireManualInput();
    wireBackdrop();
    fillActions();
    if (paneAtStart == PaneAtStart::Shown)
        m_window->makeKeyAndOrderFront();
    m_services.settings().write(settings::isAlwaysOnTop, true);
    m_mainMenu.build();
    m_mainMenu.attachContextMenu(*m_glassView);
    m_statusItem.build();
    connect(&m_desktop.bus, &SessionBus::returned, this, [this] { m_statusItem.lookAgain(); });
    wireHotkeys();
    observeNotifications();
    registerHotkeys();
    m_services.warmUpRecognizer(m_scheduler, warmUpDelay);
}

void AppDelegate::applicationWillTerminate()
{
    m_hotkeys.unregisterHotkeys();
    qGuiApp->disconnect(this); // the window's end moves the focus once more
    m_historyWindow.reset();
    m_backdrop->stop();
    m_window->orderOut();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // which takes it off the screen
    m_services.translationManager().cancelAll();
    m_settingsShell.reset(); // which saves what was typed last
    m_services.mainQueue().drain();
}

void AppDelegate::createGlassWindow()
{
    m_window = std::make_unique<TransparentWindow>(TransparentWindow::Services{.hints = m_desktop.windowHints,
                                                                               .settings = m_services.settings(),
                                                                               .texts = m_services.texts(),
                                                                               .scheduler = m_scheduler});
    m_glassView =
        new GlassView({.settings = m_services.settings(), .texts = m_services.texts(), .scheduler = m_scheduler},
                      m_desktop.displayOptions.options());
    if (isWaylandSession())
        m_desktop.capture.explainNothingBeneath([&texts = m_services.texts()] {
            return texts.localized(
                u"在 Wayland 工作階段中，Lucentra 只看得到 X11 程式的視窗，而翻譯板下方沒有這樣的視窗。請讓那個程式透過 XWayland 執行，或改用 X11 工作階段登入。"_s);
        });
    m_desktop.capture.explainMissing([&texts = m_services.texts()](const QString &names) {
        return texts.formatted(u"這個 X 伺服器缺少擷取畫面所需的功能：%@"_s, names);
    });
    m_glassView->setComposited(m_desktop.compositing.isComposited());
    m_desktop.compositing.setChangeHandler([this](bool composited) { m_glassView->setComposited(composited); });
    m_desktop.displayOptions.setChangeHandler([this](const AccessibilityDisplayOptions &options) {
        m_glassView->accessibilityDisplayOptionsChanged(options);
        if (m_manualInputView)
            m_manualInputView->setReduceMotion(options.reduceMotion);
    });
    m_window->setContentView(m_glassView);
    m_services.onDevice().bridge.setParentView(m_glassView);
}

void AppDelegate::wirePass()
{
    // Made here, on the main thread; the pass's workers use them.
    TextRecognizer &recognizer = m_services.recognizer();
    TranslationManager &manager = m_services.translationManager();
    PassSteps steps{
        .capture = m_desktop.capture,
        .recognize =
            [this, &recognizer](const QImage &image, std::function<bool()> isWanted) {
                m_services.mainQueue().post([this] { giveBackMemoryLater(); });
                return recognizeBlocks(recognizer, image, std::move(isWanted));
            },
        .translateBlocks =
            [&manager](const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion,
                       std::function<bool()> isWanted) {
                manager.translateBlocks(blocks, std::move(completion), std::move(isWanted));
            },
        .copy = copyToClipboard,
        .record = [this](const QString &original, const QString &translation) { m_history.add(original, translation); },
        .openScreenRecordingSettings = [] {}, // no X server withholds its screen, so there is nothing to open
    };
    m_pass = std::make_unique<TranslationPass>(*m_glassView, std::move(steps), m_services.settings(),
                                               m_services.texts(), m_services.mainQueue(), m_scheduler);
    m_glassView->onTranslateTapped = [this] { m_pass->startCapturePass(); };
    m_window->onUserHold = [this](bool isHeld) { m_pass->userHolds(isHeld); };
    m_window->onUserMoved = [this](std::chrono::milliseconds ago) { m_pass->scheduleDebouncedCapture(ago); };
}

void AppDelegate::giveBackMemoryLater()
{
    // Not after every pass: one that follows at once needs the same memory again.
    if (!m_memoryTask)
        m_memoryTask = m_scheduler.after(memoryDelay, [this] {
            QThreadPool::globalInstance()->start(giveBackFreeMemory);
            m_memoryTask.reset();
        });
}

void AppDelegate::wireManualInput()
{
    m_manualInput.onTranslate = [&manager = m_services.translationManager()](
                                    const QString &text, const ManualInputViewModel::Completion &completion) {
        manager.translateText(text, completion);
    };
    connect(&m_manualInput, &ManualInputViewModel::changed, this, [this, shown = QString()]() mutable {
        const QString &note = m_manualInput.note();
        const bool isNew = std::exchange(shown, note) != note;
        if (isNew && !note.isEmpty() && m_manualInputView && !m_manualInputView->hasHeaders())
            m_glassView->showNote(note);
    });
    m_glassView->manualInput = {
        .makePanel = [this](QWidget *parent) -> QWidget * {
            m_manualInputView = new ManualInputView(m_manualInput, m_services.texts(),
                                                    m_desktop.displayOptions.options().reduceMotion, parent);
            return m_manualInputView;
        },
        .submit = [this] { m_manualInput.translateNow(); },
        .copy =
            [this] {
                m_manualInput.copyResult();
                if (m_manualInput.isCopied() && m_manualInputView && !m_manualInputView->hasHeaders())
                    m_glassView->showHint(m_services.texts().localized(u"已複製"_s), true);
            },
        .reset =
            [this] { // the input mode begins or ends
                m_manualInput.reset();
                m_pass->supersede();
            },
    };
}

void AppDelegate::wireBackdrop()
{
    m_backdrop = std::make_unique<BackdropRenewal>(
        BackdropRenewal::Pane{
            .area = [this] { return m_glassView->glassArea(); },
            .display = [this] { return m_glassView->displayArea(); },
            .showBeneath = [this](const QImage &content) { m_glassView->setBackdropContent(content); }},
        m_desktop.capture, m_desktop.changes, m_services.texts(), m_captureWorker, m_services.mainQueue(), m_scheduler);
    m_window->onShown = [this](bool shown) {
        m_desktop.capture.setPaneShown(shown);
        if (shown)
            m_backdrop->start();
        else
            m_backdrop->stop();
        paneShownOrHidden(shown);
    };
    m_window->onFrameChanged = [this] { m_backdrop->paneMoved(); };
}

void AppDelegate::fillActions()
{
    m_actions.toggleWindow = [this] { toggleWindow(); };
    m_actions.translateCurrentArea = [this] {
        if (m_pass) // a press may still wait while the program ends
            m_pass->translateCurrentArea();
    };
    m_actions.openSettings = [this] { openSettings(); };
    m_glassView->onSettingsTapped = m_actions.openSettings;
    m_actions.openHistory = [this] { historyWindow().showWindow(); };
    m_glassView->onHistoryTapped = m_actions.openHistory;
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        m_autoHide.focusChanged();
        keepAbovePane(focus);
    });
}

void AppDelegate::keepAbovePane(const QWindow *used)
{
    // The pane is above all windows, and may cover the whole screen: what the user works with must not lie beneath it.
    for (const QWindow *window : QGuiApplication::topLevelWindows()) {
        const bool isMember = window->type() == Qt::Window || window->type() == Qt::Dialog;
        if (isMember && window->isExposed() && window != m_window->windowHandle())
            m_desktop.windowHints.setAbove(*window, used && (window == used || window == used->transientParent()));
    }
}

void AppDelegate::openSettings()
{
    if (!m_settingsShell) {
        m_settingsShell = std::make_unique<SettingsShell>(
            SettingsShell::Program{
                .services = m_services,
                .scheduler = m_scheduler,
                .hotkeys = m_hotkeys,
                .menu = m_mainMenu,
                .registerHotkeys = [this] { registerHotkeys(); },
                .applyDockPresence = [this](bool on) { applyDockPresence(*m_window, on); },
                .paneFrame = [this] { return m_window->isShown() ? m_window->geometry() : QRect(); }},
            m_diagnostics);
    }
    SettingsWindowController &controller = m_settingsShell->controller();
    controller.showWindow();
    m_desktop.windowHints.activate(*controller.window().windowHandle());
}

HistoryWindowController &AppDelegate::historyWindow()
{
    if (!m_historyWindow) {
        m_historyWindow = std::make_unique<HistoryWindowController>(HistoryWindowController::Services{
            .history = m_history,
            .settings = m_services.settings(),
            .texts = m_services.texts(),
            .scheduler = m_scheduler,
            .activate = [this](QWindow &window) { m_desktop.windowHints.activate(window); }});
        m_mainMenu.fillMenuBar(*m_historyWindow->menuBar());
        m_historyWindow->menuBar()->lower(); // a screen reader reads from the top to the bottom
    }
    return *m_historyWindow;
}

void AppDelegate::wireHotkeys()
{
    m_hotkeys.onToggleWindow = m_actions.toggleWindow;
    m_hotkeys.onHideWindow = [this] { m_window->orderOut(); };
    m_hotkeys.onTranslateCurrentArea = m_actions.translateCurrentArea;
}

void AppDelegate::observeNotifications()
{
    m_services.settings().followFile();
    m_services.settings().observe(notifications::updateGlobalHotkey, this, [this] { registerHotkeys(); });
    m_services.texts().observeLanguage(this, [this] { refreshLocalizedTitles(); });
}

void AppDelegate::registerHotkeys()
{
    m_hotkeys.registerHotkeys([this](quint32 flags, const QString &key) { m_statusItem.setToggleKeys(flags, key); });
}

bool AppDelegate::isPaneActive() const
{
    return QGuiApplication::focusWindow() == m_window->windowHandle();
}

bool AppDelegate::isPaneKeyWindow() const
{
    const bool isComposing = m_manualInputView && m_manualInputView->takesEscape();
    return isPaneActive() && !QApplication::activePopupWidget() && !isComposing; // whose keys come first
}

void AppDelegate::refreshLocalizedTitles()
{
    m_toolkitTexts.use(m_services.texts().resolvedLanguageCode());
    useInterfaceFont(m_services.texts().resolvedLanguageCode());
    m_mainMenu.build();
    m_statusItem.build();
    if (m_settingsShell)
        m_settingsShell->controller().refreshTitle();
    historyWindow().refreshTexts();
    m_hotkeys.tellStoredCombination(
        [this](quint32 flags, const QString &key) { m_statusItem.setToggleKeys(flags, key); });
}

void AppDelegate::showPane()
{
    m_window->makeKeyAndOrderFront();
    if (m_window->isShown())
        m_desktop.windowHints.activate(*m_window->windowHandle());
}

void AppDelegate::paneShownOrHidden(bool shown)
{
    if (shown)
        m_desktop.windowHints.activate(*m_window->windowHandle());
    if (!shown && m_pass && !m_window->isMinimized() && !m_statusItem.isShown())
        tellOfMissingTray();
}

void AppDelegate::tellOfMissingTray()
{
    if (std::exchange(m_hasToldOfMissingTray, true))
        return;
    const LocalizationManager &texts = m_services.texts();
    const QString hotkey = desktopNameOfHotkey(m_services.settings().read(settings::hotkeyString));
    showDesktopNotice(
        m_desktop.bus.connection(), texts.localized(u"Lucentra｜澄鏡通"_s),
        m_hotkeys.isToggleHotkeyRefused()
            ? texts.localized(u"這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。"_s)
            : texts.formatted(u"這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。"_s, hotkey));
}

void AppDelegate::completeStoring()
{
    m_history.blockSignals(true);
    m_history.finish(true);
    m_services.settings().flush(true);
}

void AppDelegate::toggleWindow()
{
    if (m_window->isShown())
        m_window->orderOut();
    else
        showPane();
}

bool AppDelegate::perform(Invocation::Command command)
{
    using Command = Invocation::Command;
    switch (command) {
    case Command::Toggle:
        toggleWindow();
        break;
    case Command::Show:
        showPane();
        break;
    case Command::Hide:
        m_window->orderOut();
        break;
    case Command::Translate:
        m_actions.translateCurrentArea();
        break;
    case Command::Settings:
        openSettings();
        break;
    case Command::History:
        historyWindow().showWindow();
        break;
    case Command::Quit:
        QCoreApplication::exit();
        break;
    default:
        return false;
    }
    return true;
}

} // namespace lucentra
