#pragma once

#include "X11Windows.h"

#include <QHash>
#include <QRect>

#include <chrono>
#include <optional>

namespace lucentra {

/// Makes this program's windows over an area invisible, by their opacity, until it is destroyed. For compositors that
/// heed the opacity of windows. This takes two steps, so that the compositor draws once more after the time from which
/// they can't be seen. Blocking calls on a private connection; one thread.
class X11WindowVeil
{
public:
    /// Longest wait for the window manager's notice that it has handled the change.
    static constexpr std::chrono::milliseconds managerPatience{1000};

    /// `ours` are the resource ids of the connection that this program's windows are made on; the area is in native
    /// pixels.
    X11WindowVeil(X11ResourceRange ours, const QRect &area);
    ~X11WindowVeil();
    X11WindowVeil(const X11WindowVeil &) = delete;
    X11WindowVeil &operator=(const X11WindowVeil &) = delete;

    std::chrono::steady_clock::time_point since() const { return m_since; }
    /// A time before the change.
    std::chrono::steady_clock::time_point begun() const { return m_begun; }

private:
    void setOpacity(xcb_window_t window, std::optional<quint32> opacity);
    void setOpacities(quint32 opacity);
    void askManager();
    void waitForManager();

    int m_screenNumber = 0;
    X11Connection m_connection;
    xcb_screen_t *m_screen = nullptr; ///< null without a server
    xcb_atom_t m_opacity = XCB_ATOM_NONE;
    xcb_atom_t m_question = XCB_ATOM_NONE; ///< to the window manager
    std::chrono::steady_clock::time_point m_begun;
    std::chrono::steady_clock::time_point m_since;
    QHash<xcb_window_t, std::optional<quint32>> m_before; ///< the windows' own opacities
};

/// While it exists, this program's windows aren't kept above others, so that a question of the desktop isn't beneath
/// them. Blocking calls on a private connection; any thread.
class X11WindowsLowered
{
public:
    explicit X11WindowsLowered(xcb_window_t pane);
    ~X11WindowsLowered();
    X11WindowsLowered(const X11WindowsLowered &) = delete;
    X11WindowsLowered &operator=(const X11WindowsLowered &) = delete;

private:
    void setAbove(bool isAbove);

    int m_screenNumber = 0;
    X11Connection m_connection;
    xcb_window_t m_pane;
};

} // namespace lucentra
