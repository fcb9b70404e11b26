#pragma once

#include "Callback.h"
#include "GlobalHotkeys.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

namespace lucentra {

class MainQueue;
class SettingsStore;

/// The global hotkeys: the stored one that shows and hides the pane, the fixed ⌥Return that translates, and the stored
/// one that has translations follow the screen, if there is one; and Escape, which hides the pane while its window has
/// the keyboard focus.
class HotkeyManager : public QObject
{
public:
    /// `isPaneKeyWindow` returns whether a key that is pressed now would go to the pane's window.
    HotkeyManager(const SettingsStore &settings, GlobalHotkeys &hotkeys, MainQueue &mainQueue,
                  std::function<bool()> isPaneKeyWindow, DiagnosticLine diagnostics);
    ~HotkeyManager() override;

    // Called from the main queue, never during the window system's dispatch of events.
    Callback<> onToggleWindow;
    Callback<> onTranslateCurrentArea;
    Callback<> onSwitchLive;
    /// Called during the dispatch of Escape.
    Callback<> onHideWindow;

    /// Gets the stored combination for menus: modifier flags (VirtualKeys.h) and the key in lower case.
    Callback<quint32, const QString &> onHotkeyDisplayChanged;

    /// Unregisters everything and registers it again from the settings. A refused hotkey is logged; the other one is
    /// registered and `onHotkeyDisplayChanged` is called all the same.
    void registerHotkeys();
    /// Calls `onHotkeyDisplayChanged` without registering anything.
    void tellStoredCombination() const;
    /// Unregisters all hotkeys. Escape still works.
    void unregisterHotkeys();
    bool areKeysChosenHere() const { return m_hotkeys.areKeysChosenHere(); }
    QString keysOfDesktop(HotkeyAction action) const { return m_hotkeys.keysOfDesktop(action); }
    std::function<void()> keyDialog() { return m_hotkeys.keyDialog(); }
    /// Unregisters the hotkeys while the user records one, and registers them after that unless it was done already.
    void setRecording(bool isRecording);
    /// Whether the stored hotkey of an action was refused at its last registration.
    bool isRefused(HotkeyAction action) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int add(HotkeyAction action, quint32 keyCode, quint32 modifiers);
    void registerToggleHotkey();
    bool hasLiveHotkey() const;
    void handlePressed(HotkeyAction action);

    const SettingsStore &m_settings;
    GlobalHotkeys &m_hotkeys;
    MainQueue &m_mainQueue;
    const std::function<bool()> m_isPaneKeyWindow;
    const DiagnosticLine m_diagnostics;
    QSet<HotkeyAction> m_registrations; ///< those that weren't refused
    bool m_isRegistered = false;
};

} // namespace lucentra
