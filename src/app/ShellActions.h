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
};

} // namespace lucentra
