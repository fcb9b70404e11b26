#pragma once

#include <functional>

namespace lucentra {

class GlobalHotkeys;
class PaneWindowHints;
class ScreenCapture;
class ScreenStream;

/// What the program with its pane needs of a desktop. One implementation per window system.
class Desktop
{
public:
    virtual ~Desktop() = default;

    virtual ScreenCapture &capture() = 0;
    virtual ScreenStream &stream() = 0;
    virtual GlobalHotkeys &hotkeys() = 0;
    virtual PaneWindowHints &windows() = 0;
    /// Whether translucent windows are blended with the windows beneath them, as compositors of Wayland always do.
    virtual bool isComposited() const { return true; }
    /// Calls the handler with the new state whenever that changes. Replaces the previous handler.
    virtual void setCompositedHandler(std::function<void(bool)>) {}
    /// Whether the desktop has a place for status items at this moment.
    virtual bool hasTray() const = 0;
};

} // namespace lucentra
