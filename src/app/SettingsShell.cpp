#include "SettingsShell.h"

#include "ConnectionTest.h"
#include "HotkeyManager.h"
#include "MainMenu.h"
#include "Services.h"
#include "Version.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

SettingsServices servicesOf(const SettingsShell::Program &program, LaunchAtLogin &launchAtLogin)
{
    Services &services = program.services;
    HotkeyManager &hotkeys = program.hotkeys;
    return {
        .settings = services.settings(),
        .texts = services.texts(),
        .scheduler = program.scheduler,
        .mainQueue = services.mainQueue(),
        .keychain = services.keychain(),
        .launchAtLogin = launchAtLogin,
        .testConnection =
            [&services](const std::function<void(Result<QString>)> &completion) {
                testConnection(services.translationManager(), services.settings(), services.texts(), completion);
            },
        .onDeviceStatus =
            [&onDevice = services.onDevice()] {
                onDevice.store.file(); // waits a moment for phrases that are being collected
                return onDevice.service.status();
            },
        .applyDockPresence = program.applyDockPresence,
        .hotkeyRecordingChanged =
            [&hotkeys, registerHotkeys = program.registerHotkeys](bool isRecording) {
                if (isRecording)
                    hotkeys.unregisterHotkeys();
                else if (!hotkeys.isRegistered())
                    registerHotkeys();
            },
        .isHotkeyRefused = [&hotkeys] { return hotkeys.isToggleHotkeyRefused(); },
        .fillMenuBar = [&menu = program.menu](QMenuBar &bar) { menu.fillMenuBar(bar); },
        .paneFrame = program.paneFrame,
        .pagesFolder = QCoreApplication::applicationDirPath() + u"/../share/lucentra/privacy"_s,
        .applicationIcon = QIcon(u":/lucentra/icons/com.tarnby.lucentra.svg"_s),
        .version = versionAndBuild(),
    };
}

} // namespace

SettingsShell::SettingsShell(const Program &program, DiagnosticLine diagnostics)
    : m_autostart(AutostartEntry::ofUser())
    , m_launchAtLogin(m_autostart, program.services.mainQueue(), std::move(diagnostics))
    , m_controller(servicesOf(program, m_launchAtLogin))
{
}

} // namespace lucentra
