#pragma once

#include <functional>

namespace lucentra {

/// What menus, the status item and remote commands can have the program do. An action that isn't set has no menu item
/// and refuses its command.
struct ShellActions
{
    std::function<void()> toggleWindow;
    std::function<void()> translateCurrentArea;
    std::function<void()> openSettings;
    std::function<void()> openHistory;
};

} // namespace lucentra
