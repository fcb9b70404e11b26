#pragma once

#include "Scheduler.h"

#include <QObject>

#include <functional>
#include <memory>

class QMenu;
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

    /// `clicked` is called after a left click; `isTrayThere` returns whether the desktop has a tray now.
    StatusItem(const LocalizationManager &texts, QMenu &menu, std::function<void()> clicked, Scheduler &scheduler,
               std::function<bool()> isTrayThere);
    ~StatusItem() override;

    /// Shows the item as soon as there is a tray, its tool tip in the interface language.
    void build();
    /// Shows a new item as soon as there is a tray. To be called after the session bus has ended.
    void renew();

    /// Whether the item is in a tray.
    bool isShown() const { return m_icon && m_isTrayThere(); }

private:
    void poll();
    void makeIcon();

    const LocalizationManager &m_texts;
    QMenu &m_menu;
    const std::function<void()> m_clicked;
    Scheduler &m_scheduler;
    const std::function<bool()> m_isTrayThere;
    std::unique_ptr<ScheduledTask> m_poll;
    std::chrono::milliseconds m_pollInterval = firstPollInterval;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace lucentra
