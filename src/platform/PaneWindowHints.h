#pragma once

#include <functional>

class QWindow;

namespace lucentra {

/// Where a window is listed.
struct PaneWindowPresence
{
    bool isListed = true; ///< in the task bar, the pager and the window switcher

    bool operator==(const PaneWindowPresence &) const = default;
};

/// The window-system services that the pane's window needs and the toolkit lacks.
class PaneWindowHints
{
public:
    virtual ~PaneWindowHints() = default;

    /// Keeps a shown window above the others and on all desktops, and lists it or not. Window managers forget these
    /// hints when a window is hidden, so they must be applied again each time it is shown.
    virtual void apply(const QWindow &window, const PaneWindowPresence &presence) = 0;

    /// Whether a pointer button is down at this moment, also while a window manager has grabbed the pointer.
    virtual bool isPointerButtonDown() const = 0;

    /// Calls the handler when the user takes hold of the window (true) and lets go of it (false): by a pointer button
    /// over the window, also for a drag by the window manager, or by a key of the window manager. The window must
    /// outlive this object or the next call.
    virtual void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) = 0;

    /// Cancels a window manager's drag that began after the button was released and would never end. Does nothing if
    /// there is none.
    virtual void endDrag(const QWindow &window) = 0;
};

} // namespace lucentra
