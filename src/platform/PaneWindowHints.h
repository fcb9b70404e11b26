#pragma once

class QWindow;

namespace lucentra {

/// Where a window shows up besides on the screen.
struct PaneWindowPresence
{
    bool isListed = true; ///< in the task bar, the pager and the window switcher

    bool operator==(const PaneWindowPresence &) const = default;
};

/// What the pane's window needs of the window system beyond the toolkit. Main thread only.
class PaneWindowHints
{
public:
    virtual ~PaneWindowHints() = default;

    /// Keeps a shown window above the others and on all desktops, and lists it or not. Window managers forget this
    /// when a window is hidden, so it is asked for again after every showing.
    virtual void apply(const QWindow &window, const PaneWindowPresence &presence) = 0;

    /// Whether a button of the pointer is down at this moment, also while a window manager has grabbed the pointer.
    virtual bool isPointerButtonDown() const = 0;
};

} // namespace lucentra
