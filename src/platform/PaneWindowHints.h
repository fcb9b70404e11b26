#pragma once

#include <functional>

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

    /// From now on tells when the user takes hold of the window (true) and lets go of it (false): presses a button of
    /// the pointer over it, also for the window manager's own way of dragging, or works with it through a key that
    /// belongs to the window manager. The window must outlive this object or the next call.
    virtual void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) = 0;

    /// Ends a drag that a window manager has begun after the button was let go, and which would never end. One that
    /// has ended by itself stays as it is.
    virtual void endDrag(const QWindow &window) = 0;
};

} // namespace lucentra
