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
/// A tray may start after the program, above all at login; the item appears once there is one. It isn't made before,
/// since the toolkit chooses between the two kinds of trays when the item is first shown.
class StatusItem : public QObject
{
public:
    /// Interval of the checks while there is no tray: at first, and after a while.
    static constexpr std::chrono::milliseconds firstPollInterval{1000};
    static constexpr std::chrono::milliseconds longestPollInterval{30000};
    /// Tag of the item that shows the stored toggle hotkey.
    static constexpr int toggleTag = 100;

    /// `isTrayThere` returns whether the desktop has a tray now.
    StatusItem(const LocalizationManager &texts, const ShellActions &actions, Scheduler &scheduler,
               std::function<bool()> isTrayThere);
    ~StatusItem() override;

    /// Builds the menu in the interface language, and shows the item as soon as there is a tray.
    void build();
    /// Updates the item of live translation.
    void updateLive();
    /// Shows a new item as soon as there is a tray. To be called after the session bus has ended.
    void renew();
    /// The keys that the item with the toggle tag shows: modifier flags (VirtualKeys.h) and the key.
    void setToggleKeys(quint32 flags, const QString &key);

    /// Whether the item is in a tray.
    bool isShown() const { return m_icon && m_isTrayThere(); }
    const QMenu &menu() const { return m_menu; }

private:
    void poll();
    void makeIcon();
    QAction *add(const QString &key, const QKeySequence &shortcut, std::function<void()> act);

    const LocalizationManager &m_texts;
    const ShellActions &m_actions;
    Scheduler &m_scheduler;
    const std::function<bool()> m_isTrayThere;
    std::unique_ptr<ScheduledTask> m_poll;
    std::chrono::milliseconds m_pollInterval = firstPollInterval;
    QMenu m_menu;
    QAction *m_live = nullptr;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace lucentra
