#pragma once

#include "DiagnosticLine.h"
#include "GlobalHotkeys.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace lucentra {

class MainQueue;
class SettingsStore;

/// The two hotkeys that work from anywhere, the stored one that shows and hides the pane and the fixed ⌥Return that
/// translates, and Escape, which hides the pane while its window has the keys. Main thread only.
class HotkeyManager : public QObject
{
public:
    /// "LCTA"
    static constexpr quint32 signature = 0x4C435441;
    static constexpr HotkeyIdentifier toggleHotkey{signature, 1};
    static constexpr HotkeyIdentifier translateHotkey{signature, 2};

    /// What is referred to must outlive the manager. `isPaneKeyWindow` tells whether a key that is pressed now would
    /// go to the pane's window.
    HotkeyManager(const SettingsStore &settings, GlobalHotkeys &hotkeys, MainQueue &mainQueue,
                  std::function<bool()> isPaneKeyWindow, DiagnosticLine diagnostics);
    ~HotkeyManager() override;

    // Called from the main queue, never within the window system's own dispatch of events.
    std::function<void()> onToggleWindow;
    std::function<void()> onTranslateCurrentArea;
    /// Called while Escape is dispatched.
    std::function<void()> onHideWindow;

    /// Takes modifier flags (VirtualKeys.h) and the key, in lower case, as menus show the stored combination.
    using DisplayChanged = std::function<void(quint32 flags, const QString &key)>;

    /// Lets everything go and registers it again from the settings. A refused hotkey is a line in the log and stops
    /// nothing else; the callback is told the stored combination all the same.
    void registerHotkeys(const DisplayChanged &onHotkeyDisplayChanged = {});
    /// Tells the stored combination without registering anything.
    void tellStoredCombination(const DisplayChanged &onHotkeyDisplayChanged) const;
    /// Lets both hotkeys go; Escape still works.
    void unregisterHotkeys();
    /// Whether `registerHotkeys` was called since the last `unregisterHotkeys`.
    bool isRegistered() const { return m_isRegistered; }
    /// Whether the system refused the stored hotkey when it was registered last.
    bool isToggleHotkeyRefused() const { return m_isRegistered && !m_carbonHotKeyRef; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::unique_ptr<HotkeyReference> registerToggleHotkey();
    std::unique_ptr<HotkeyReference> registerTranslateHotkey();
    void handlePressed(HotkeyIdentifier identifier);
    void log(const QString &line) const;

    const SettingsStore &m_settings;
    GlobalHotkeys &m_hotkeys;
    MainQueue &m_mainQueue;
    const std::function<bool()> m_isPaneKeyWindow;
    const DiagnosticLine m_diagnostics;
    std::unique_ptr<HotkeyReference> m_carbonHotKeyRef;    ///< the toggle hotkey; empty where it was refused
    std::unique_ptr<HotkeyReference> m_translateHotKeyRef; ///< likewise
    bool m_isRegistered = false;
};

} // namespace lucentra
