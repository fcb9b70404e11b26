#pragma once

namespace lucentra {

class AccessibilityDisplaySource;
class CompositingMonitor;
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
    virtual CompositingMonitor &compositing() = 0;
    virtual AccessibilityDisplaySource &displayOptions() = 0;
    /// Whether the desktop has a place for status items at this moment.
    virtual bool hasTray() const = 0;
};

} // namespace lucentra
