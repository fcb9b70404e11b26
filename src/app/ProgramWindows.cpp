#include "ProgramWindows.h"

#include "DesktopShortcuts.h"
#include "HistoryManager.h"
#include "HotkeyManager.h"
#include "MainMenu.h"
#include "PaneWindowHints.h"
#include "Services.h"
#include "Settings.h"
#include "Version.h"
#include "VirtualKeys.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QWindow>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

void applyDesktopShortcuts(const SettingsStore &settings, bool isOn)
{
    if (isOn)
        setDesktopShortcuts(desktopNameOfHotkey(settings.read(settings::hotkeyString)), u"Alt+Return"_s);
    else
        removeDesktopShortcuts();
}

ProgramWindows::ProgramWindows(Program program)
    : m_program(std::move(program))
    , m_autostart(AutostartEntry::ofUser())
{
}

SettingsServices ProgramWindows::settingsServices()
{
    Services &services = m_program.services;
    HotkeyManager &hotkeys = m_program.hotkeys;
    // If the desktop manages the hotkeys, its custom shortcuts can only be removed.
    const bool offersDesktopShortcuts =
        areDesktopShortcutsOffered() && (hotkeys.areKeysChosenHere() || areDesktopShortcutsSet());
    return {
        .settings = services.settings(),
        .texts = services.texts(),
        .scheduler = m_program.scheduler,
        .mainQueue = services.mainQueue(),
        .keychain = services.keychain(),
        .loginItem = m_autostart,
        .hotkeys = hotkeys,
        .diagnostics = m_program.diagnostics,
        .models = services.models(),
        .modelInstallation = services.modelInstallation(),
        .testConnection = [&services](const auto &completion) { services.testEngine(completion); },
        .onDeviceStatus = [&services] { return services.onDeviceStatus(); },
        .applyDockPresence = m_program.applyDockPresence,
        .areDesktopShortcutsSet = offersDesktopShortcuts ? areDesktopShortcutsSet : std::function<bool()>(),
        .setDesktopShortcuts = offersDesktopShortcuts ? [&settings = services.settings()](
                                                            bool isOn) { applyDesktopShortcuts(settings, isOn); }
                                                      : std::function<void(bool)>(),
        .shortcutConfiguration = shortcutConfigurationLine(),
        .fillMenuBar = [&menu = m_program.menu](QMenuBar &bar) { menu.fillMenuBar(bar); },
        .paneFrame = m_program.paneFrame,
        .pagesFolder = QCoreApplication::applicationDirPath() + u"/../share/lucentra/privacy"_s,
        .applicationIcon = QIcon(u":/lucentra/icons/com.tarnby.lucentra.svg"_s),
        .version = versionAndBuild(),
    };
}

void ProgramWindows::openSettings()
{
    if (!m_settingsWindow)
        m_settingsWindow = std::make_unique<SettingsWindowController>(settingsServices());
    m_settingsWindow->showWindow();
    m_program.windowHints.activate(*m_settingsWindow->windowHandle());
}

void ProgramWindows::openModels()
{
    openSettings();
    m_settingsWindow->showModels();
}

HistoryWindowController &ProgramWindows::historyWindow()
{
    if (!m_historyWindow) {
        m_historyWindow = std::make_unique<HistoryWindowController>(HistoryWindowController::Services{
            .history = m_program.history,
            .settings = m_program.services.settings(),
            .texts = m_program.services.texts(),
            .scheduler = m_program.scheduler,
            .activate = [&hints = m_program.windowHints](QWindow &window) { hints.activate(window); }});
        m_program.menu.fillMenuBar(*m_historyWindow->menuBar());
        m_historyWindow->menuBar()->lower(); // a screen reader reads from the top to the bottom
    }
    return *m_historyWindow;
}

void ProgramWindows::openHistory(const QString &source, const QString &translation)
{
    const auto holds = [](const QString &text, const QString &lines) {
        return (u'\n' + text + u'\n').contains(u'\n' + lines + u'\n');
    };
    openHistory();
    for (const HistoryItem &item : m_program.history.history()) {
        if (holds(item.originalText, source) && holds(item.translatedText, translation))
            return historyWindow().showEntry(item.id);
    }
}

void ProgramWindows::refreshTexts()
{
    if (m_settingsWindow)
        m_settingsWindow->refreshTitle();
    historyWindow().refreshTexts();
}

void ProgramWindows::close()
{
    m_historyWindow.reset();
    m_settingsWindow.reset();
}

} // namespace lucentra
