#include "HotkeyManager.h"

#include "MainQueue.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "VirtualKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

HotkeyManager::HotkeyManager(const SettingsStore &settings, GlobalHotkeys &hotkeys, MainQueue &mainQueue,
                             std::function<bool()> isPaneKeyWindow, DiagnosticLine diagnostics)
    : m_settings(settings)
    , m_hotkeys(hotkeys)
    , m_mainQueue(mainQueue)
    , m_isPaneKeyWindow(std::move(isPaneKeyWindow))
    , m_diagnostics(std::move(diagnostics))
{
    m_hotkeys.setChangeHandler([this] {
        if (m_isRegistered)
            registerHotkeys();
    });
}

HotkeyManager::~HotkeyManager()
{
    m_hotkeys.setChangeHandler({});
    unregisterHotkeys();
}

void HotkeyManager::registerHotkeys()
{
    unregisterHotkeys();
    m_isRegistered = true;
    registerToggleHotkey();
    if (const int refusal = add(HotkeyAction::TranslateArea, virtualKey::returnKey, hotkeyModifier::option))
        m_diagnostics(u"  ⚠ ⌥Return 全域翻譯快捷鍵註冊失敗，OSStatus="_s + QString::number(refusal));
    if (hasLiveHotkey())
        add(HotkeyAction::SwitchLive, quint32(m_settings.read(settings::liveHotkeyCode)),
            hotkeyModifiersOfFlags(quint64(m_settings.read(settings::liveHotkeyModifiers))));
    m_hotkeys.setPressedHandler([this](HotkeyAction action) { handlePressed(action); });
    tellStoredCombination();
    // A filter that is installed again moves to the front; there is still only one.
    qApp->installEventFilter(this);
}

void HotkeyManager::tellStoredCombination() const
{
    const auto flags = quint32(m_settings.read(settings::hotkeyModifiers));
    onHotkeyDisplayChanged(flags, menuKeyOfDisplayString(m_settings.read(settings::hotkeyString)));
}

void HotkeyManager::unregisterHotkeys()
{
    m_hotkeys.setPressedHandler({});
    m_hotkeys.unregisterHotkeys();
    m_registrations.clear();
    m_isRegistered = false;
}

/// Returns one of `hotkeyStatus`, which is 0 unless the system has refused it.
int HotkeyManager::add(HotkeyAction action, quint32 keyCode, quint32 modifiers)
{
    const int status = m_hotkeys.registerHotkey(action, keyCode, modifiers);
    if (status == hotkeyStatus::registered)
        m_registrations.insert(action);
    return status;
}

void HotkeyManager::registerToggleHotkey()
{
    const auto keyCode = quint32(m_settings.read(settings::hotkeyCode));
    const quint32 modifiers = hotkeyModifiersOfFlags(quint64(m_settings.read(settings::hotkeyModifiers)));
    if (const int refusal = add(HotkeyAction::TogglePane, keyCode, modifiers))
        m_diagnostics(u"  ⚠ Carbon RegisterEventHotKey 失敗，OSStatus="_s + QString::number(refusal));
    else
        m_diagnostics(u"  ✅ Carbon 熱鍵已註冊 keyCode="_s + QString::number(keyCode) + u" carbonMods="_s +
                      QString::number(modifiers));
}

bool HotkeyManager::hasLiveHotkey() const
{
    return m_hotkeys.areKeysChosenHere() && !m_settings.read(settings::liveHotkeyString).isEmpty();
}

void HotkeyManager::setRecording(bool isRecording)
{
    if (isRecording)
        unregisterHotkeys();
    else if (!m_isRegistered)
        registerHotkeys();
}

bool HotkeyManager::isRefused(HotkeyAction action) const
{
    return m_isRegistered && !m_registrations.contains(action) &&
           (action != HotkeyAction::SwitchLive || hasLiveHotkey());
}

void HotkeyManager::handlePressed(HotkeyAction action)
{
    m_mainQueue.post(this, [this, action] {
        switch (action) {
        case HotkeyAction::TogglePane:
            return onToggleWindow();
        case HotkeyAction::TranslateArea:
            return onTranslateCurrentArea();
        case HotkeyAction::SwitchLive:
            return onSwitchLive();
        }
    });
}

bool HotkeyManager::eventFilter(QObject *watched, QEvent *event)
{
    // Keys reach a window before its widgets, so the filter can still consume them.
    const bool isEscape = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
    if (!isEscape || !watched->isWindowType() || !m_isPaneKeyWindow())
        return false;
    onHideWindow();
    return true;
}

} // namespace lucentra
