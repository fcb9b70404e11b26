#include "AppDelegate.h"

#include "ControlCapsuleView.h"
#include "DesktopNotice.h"
#include "DesktopShortcuts.h"
#include "Engines.h"
#include "InstallCommand.h"
#include "MakeDesktop.h"
#include "Settings.h"
#include "VirtualKeys.h"

#include <QApplication>
#include <QClipboard>
#include <QHash>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How long the rest of the start waits for the pane's first picture. Some window managers show a window late.
constexpr auto longestWaitForPicture = 2s;

QWidget *settingsWindow(const QWidget &pane)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const QWidget *window) {
        return window != &pane && window->isVisible() &&
               (window->windowTitle().contains(u"Lucentra"_s) || window->objectName() == "settings"_L1);
    });
    return found == windows.end() ? nullptr : *found;
}

/// Applies a changed "showInDock" while the program runs: adds the pane to the task bar, the pager and the window
/// switcher, or removes it. The settings window, which has the switch, stays in front and keeps the focus: it is the
/// visible window other than the pane that is named "settings" or has "Lucentra" in its title.
void applyDockPresence(TransparentWindow &pane, bool showInDock)
{
    pane.updatePresence();
    QWidget *window = settingsWindow(pane);
    if (!window && showInDock && pane.isShown())
        window = &pane;
    if (!window)
        return;
    window->raise();
    window->activateWindow();
}

} // namespace

AppDelegate::AppDelegate(Scheduler &scheduler, SessionBus &bus, const DiagnosticLine &diagnostics)
    : m_scheduler(scheduler)
    , m_services(diagnostics, {.copy = [](const QString &text) { QGuiApplication::clipboard()->setText(text); },
                               .record = [this](const QString &original,
                                                const QString &translation) { m_history.add(original, translation); }})
    , m_history(HistoryManager::userFilePath(), m_services.mainQueue(), diagnostics)
    , m_bus(bus)
    , m_desktop(makeDesktop(
          {.scheduler = m_scheduler,
           .bus = bus,
           .mainQueue = m_services.mainQueue(),
           .localized = [&texts = m_services.texts()](const QString &key) { return texts.localized(key); },
           .screenShares = {.read = [&store = m_services.settings()] { return store.read(settings::screenShares); },
                            .write = [&store = m_services.settings()](
                                         const QString &shares) { store.write(settings::screenShares, shares); }}}))
    , m_hotkeys(
          m_services.settings(), m_desktop->hotkeys(), m_services.mainQueue(), [this] { return m_pane->isKeyWindow(); },
          diagnostics)
    , m_mainMenu(m_services.texts(), m_actions)
    , m_statusItem(
          m_services.texts(), m_mainMenu.statusMenu(), [this] { m_pane->toggle(); }, m_scheduler,
          [this] { return m_desktop->hasTray(); })
    , m_windows({.services = m_services,
                 .scheduler = scheduler,
                 .history = m_history,
                 .hotkeys = m_hotkeys,
                 .menu = m_mainMenu,
                 .windowHints = m_desktop->windows(),
                 .applyDockPresence = [this](bool on) { applyDockPresence(m_pane->window(), on); },
                 .paneFrame = [this] { return paneFrame(); },
                 .diagnostics = diagnostics})
{
}

void AppDelegate::applicationDidFinishLaunching(PaneAtStart paneAtStart)
{
    m_services.texts().syncTargetLanguage();
    m_pane.emplace(m_scheduler, m_services, *m_desktop, m_bus, m_history);
    m_pane->onShown = [this](bool shown) {
        if (shown && !m_isLaunched) // before the window is painted
            m_finish = m_scheduler.after(0ms, [this] { finishLaunching(); });
        if (!shown && !m_pane->window().isMinimized() && !m_statusItem.isShown())
            tellOfMissingTray();
    };
    m_actions = {.toggleWindow = [this] { m_pane->toggle(); },
                 .translateCurrentArea = [this] { m_pane->translateCurrentArea(); },
                 .openSettings = [this] { m_windows.openSettings(); },
                 .openHistory = [this] { m_windows.openHistory(); },
                 .setLive = [this](bool isLive) { setLive(isLive); },
                 .isLive = [this] { return m_pane->canBeLive() && m_services.settings().read(settings::isLive); },
                 .canBeLive = [this] { return m_pane->canBeLive(); },
                 .paneFrame = [this] { return paneFrame(); }};
    m_pane->view().capsule().onSettingsTapped = m_actions.openSettings;
    m_pane->view().capsule().onHistoryTapped = m_actions.openHistory;
    m_pane->view().overlayActions().onOpenInHistory = [this](const QString &source, const QString &translation) {
        m_windows.openHistory(source, translation);
    };
    m_hotkeys.onToggleWindow = [this] { toggleByKey(); };
    m_hotkeys.onHideWindow = [this] { m_pane->hide(); };
    m_hotkeys.onTranslateCurrentArea = m_actions.translateCurrentArea;
    m_hotkeys.onSwitchLive = [this] { setLive(!m_actions.isLive()); };
    m_hotkeys.onHotkeyDisplayChanged = [this](quint32 flags, const QString &key) {
        m_mainMenu.setToggleKeys(flags, key);
    };
    m_finish = m_scheduler.after(longestWaitForPicture, [this] { finishLaunching(); });
    if (paneAtStart == PaneAtStart::Shown)
        m_pane->window().makeKeyAndOrderFront();
    m_hotkeys.registerHotkeys(); // a user who sees the pane may press them
    if (paneAtStart != PaneAtStart::Shown)
        finishLaunching();
}

void AppDelegate::finishLaunching()
{
    if (std::exchange(m_isLaunched, true))
        return;
    m_toolkitLanguage.use(m_services.texts().resolvedLanguageCode());
    m_pane->controls().showPristineHint();
    m_pane->view().repaint(); // what follows takes a while
    m_pane->prepareEngines();
    explainPane();
    m_services.settings().write(settings::isAlwaysOnTop, true);
    m_mainMenu.build();
    m_mainMenu.attachContextMenu(
        m_pane->view(), [&view = m_pane->view()](QPoint place) { return view.overlayActions().menuItemsAt(place); });
    m_statusItem.build();
    connect(&m_bus, &SessionBus::returned, this, [this] { m_statusItem.renew(); });
    m_services.settings().observe(settings::isLive, this, [this] { m_mainMenu.updateLive(); });
    m_services.settings().observe(settings::liveHotkeyString, this, [this] { m_hotkeys.registerHotkeys(); });
    m_services.settings().followFile();
    m_services.settings().observe(notifications::updateGlobalHotkey, this, [this] {
        m_hotkeys.registerHotkeys();
        if (areDesktopShortcutsOffered() && areDesktopShortcutsSet())
            applyDesktopShortcuts(m_services.settings(), true);
    });
    m_services.texts().observeLanguage(this, [this] { refreshLocalizedTitles(); });
    m_hotkeys.tellStoredCombination();
}

void AppDelegate::applicationWillTerminate()
{
    m_finish.reset();
    m_hotkeys.unregisterHotkeys();
    m_pane->stop();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // takes the pane off the screen
    m_services.translationManager().cancelAll();
    m_windows.close();
    m_services.mainQueue().drain();
}

QRect AppDelegate::paneFrame()
{
    return m_pane->window().isShown() ? m_pane->window().geometry() : QRect();
}

void AppDelegate::explainPane()
{
    m_pane->explain({.missing =
                         [this] {
                             const LocalizationManager &texts = m_services.texts();
                             const auto command = [](const QStringList &packages) -> QString { // no line ends within a name
                                 return u'\n' + installCommand(packages).replace(u'-', QChar(0x2011));
                             };
                             QStringList missing;
                             if (const QStringList packages = m_services.engines().missingReadingPackages();
                                 !packages.isEmpty())
                                 missing.append(texts.formatted(u"沒有這些模型，就讀不到那些語言的文字。請安裝：%@"_s,
                                                                command(packages)));
                             if (!m_desktop->isComposited())
                                 missing.append(
                                     texts.localized(u"沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。"_s) +
                                     command({u"picom"_s}));
                             return missing.join(u'\n');
                         },
                     .lacksModels = [this] { return m_services.lacksModels(); },
                     .hotkey = [this] { return toggleKeys(); },
                     .openModels = [this] { m_windows.openModels(); }});
}

QString AppDelegate::toggleKeys()
{
    if (!m_hotkeys.areKeysChosenHere())
        return m_hotkeys.keysOfDesktop(HotkeyAction::TogglePane);
    // On Wayland the program's own hotkeys work only while one of its windows has the focus.
    const bool areOwnKeysUsable = !isWaylandSession() || (areDesktopShortcutsOffered() && areDesktopShortcutsSet());
    if (!areOwnKeysUsable || m_hotkeys.isRefused(HotkeyAction::TogglePane))
        return {};
    return desktopNameOfHotkey(m_services.settings().read(settings::hotkeyString));
}

void AppDelegate::toggleByKey()
{
    finishLaunching();
    m_pane->tips().done(FirstTip::Hotkey);
    m_pane->toggle();
}

bool AppDelegate::setLive(bool isLive)
{
    if (!m_pane->canBeLive())
        return false;
    m_services.settings().write(settings::isLive, isLive);
    if (isLive && !m_pane->window().isShown())
        m_pane->show();
    return true;
}

void AppDelegate::refreshLocalizedTitles()
{
    m_toolkitLanguage.use(m_services.texts().resolvedLanguageCode());
    m_mainMenu.build();
    m_statusItem.build();
    m_windows.refreshTexts();
    m_hotkeys.tellStoredCombination();
}

void AppDelegate::tellOfMissingTray()
{
    if (std::exchange(m_hasToldOfMissingTray, true))
        return;
    const LocalizationManager &texts = m_services.texts();
    const QString keys = toggleKeys();
    showDesktopNotice(
        m_bus.connection(), texts.localized(u"Lucentra｜澄鏡通"_s),
        keys.isEmpty()
            ? texts.localized(u"這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。"_s)
            : texts.formatted(u"這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。"_s, keys));
}

void AppDelegate::completeStoring()
{
    m_history.blockSignals(true);
    m_history.finish(true);
    m_services.settings().flush(true);
}

bool AppDelegate::perform(QStringView command)
{
    finishLaunching();
    if (command.startsWith(u"live "))
        return setLive(command == u"live on" || (command == u"live toggle" && !m_actions.isLive()));
    const QHash<QStringView, std::function<void()>> acts{{u"toggle", [this] { toggleByKey(); }},
                                                         {u"show", [this] { m_pane->show(); }},
                                                         {u"hide", [this] { m_pane->hide(); }},
                                                         {u"translate", m_actions.translateCurrentArea},
                                                         {u"settings", m_actions.openSettings},
                                                         {u"history", m_actions.openHistory},
                                                         {u"quit", [] { QCoreApplication::exit(); }}};
    const auto act = acts.value(command);
    if (act)
        act();
    return bool(act);
}

} // namespace lucentra
