#pragma once

#include "Scheduler.h"
#include "ShellActions.h"

#include <QMenu>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QSystemTrayIcon;

namespace lucentra {

class LocalizationManager;

/// The program's place in the desktop's tray: a left click shows and hides the pane, a right click opens the status
/// menu.
///
/// A tray may come after the program, at login above all; the item appears once there is one. The toolkit decides at
/// the item's first showing which of the two kinds of tray it speaks to, so that it isn't made before.
class StatusItem : public QObject
{
public:
    /// Between two looks for a tray while there is none: at first, and after a while.
    static constexpr std::chrono::milliseconds firstLookInterval{1000};
    static constexpr std::chrono::milliseconds longestLookInterval{30000};
    /// Tag of the item that shows the stored toggle hotkey.
    static constexpr int toggleTag = 100;

    /// `isTrayThere` returns whether the desktop has a tray now.
    StatusItem(const LocalizationManager &texts, const ShellActions &actions, Scheduler &scheduler,
               std::function<bool()> isTrayThere);
    ~StatusItem() override;

    /// Builds the menu anew, in the interface language, and shows the item as soon as there is a tray.
    void build();
    /// Shows whether translations follow the screen.
    void updateLive();
    /// Shows the item anew as soon as there is a tray: the bus that the former was on has ended.
    void lookAgain();
    /// The keys that the item with the toggle tag shows: modifier flags (VirtualKeys.h) and the key.
    void setToggleKeys(quint32 flags, const QString &key);

    /// Whether the item is in a tray.
    bool isShown() const { return m_icon && m_isTrayThere(); }
    const QMenu &menu() const { return m_menu; }

private:
    void look();
    void makeIcon();
    QAction *add(const QString &key, const QKeySequence &shortcut, std::function<void()> act);

    const LocalizationManager &m_texts;
    const ShellActions &m_actions;
    Scheduler &m_scheduler;
    const std::function<bool()> m_isTrayThere;
    std::unique_ptr<ScheduledTask> m_look;
    std::chrono::milliseconds m_lookInterval = firstLookInterval;
    QMenu m_menu;
    QAction *m_live = nullptr;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace lucentra
