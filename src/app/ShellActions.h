#pragma once

#include <functional>

namespace lucentra {

/// What menus, the status item and remote commands do. All are set before the first menu is built.
struct ShellActions
{
    std::function<void()> toggleWindow;
    std::function<void()> translateCurrentArea;
    std::function<void()> openSettings;
    std::function<void()> openHistory;
    std::function<void(bool)> setLive; ///< whether translations follow the screen
    std::function<bool()> isLive;
    std::function<bool()> canBeLive; ///< whether this desktop allows that
};

} // namespace lucentra
