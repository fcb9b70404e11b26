#pragma once

#include <QRect>

#include <functional>

namespace lucentra {

/// The actions of menus, the status item and remote commands. All are set before the first menu is built.
struct ShellActions
{
    std::function<void()> toggleWindow;
    std::function<void()> translateCurrentArea;
    std::function<void()> openSettings;
    std::function<void()> openHistory;
    std::function<void(bool)> setLive; ///< switches live translation
    std::function<bool()> isLive;
    std::function<bool()> canBeLive; ///< whether live translation is available
    std::function<QRect()> paneFrame; ///< empty while the pane is hidden; global points
};

} // namespace lucentra
