#pragma once

#include <QRect>

#include <functional>

class QWidget;
class QWindow;

namespace lucentra {

/// Where a window is listed.
struct PaneWindowPresence
{
    bool isListed = true; ///< in the task bar, the pager and the window switcher

    bool operator==(const PaneWindowPresence &) const = default;
};

/// How the pane's window, and the program's other windows over it, are placed and stacked.
class PaneWindowHints
{
public:
    virtual ~PaneWindowHints() = default;

    /// Sets the flags of the pane's window that this desktop needs, before the window system knows it.
    virtual void prepare(QWidget &) {}
    /// Whether a window manager can minimize and maximize the pane.
    virtual bool isManaged() const { return true; }

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

    /// Moves and resizes a window; global points.
    virtual void place(QWidget &window, const QRect &frame) = 0;
    /// Starts a drag by the window manager. Returns false if there is none, so that the window has to move itself.
    virtual bool startMove(QWindow &window) = 0;
    virtual bool startResize(QWindow &window, Qt::Edges edges) = 0;

    /// Whether keys go to the window. Unlike the toolkit's focus, this doesn't change during a keyboard grab.
    virtual bool hasInputFocus(const QWindow &window) const = 0;
    /// Keeps a mapped window above others, like the pane, or stops doing so.
    virtual void setAbove(const QWindow &window, bool isAbove) = 0;
    /// Activates a mapped window at the user's wish, as a task bar would.
    virtual void activate(const QWindow &window) = 0;
};

} // namespace lucentra
