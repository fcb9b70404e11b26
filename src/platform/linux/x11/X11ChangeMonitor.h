#pragma once

#include "Callback.h"
#include "ScreenRect.h"
#include "X11Composer.h"
#include "X11EventConnection.h"

#include <QHash>
#include <QRect>

#include <xcb/damage.h>

#include <functional>
#include <memory>

namespace lucentra {

/// Watches other programs' top-level windows through XDamage, and the desktop's picture through the root window's
/// property, on a private connection. A window that is drawn continuously causes one event per `rearm`.
class X11ChangeMonitor
{
public:
    /// Connects to $DISPLAY. `ours` are the ids of the connection that this program's windows belong to; `toNative`
    /// converts an area in points to native pixels.
    X11ChangeMonitor(X11ResourceRange ours, std::function<QRect(const ScreenRect &)> toNative);

    /// Watches an area (global points) in place of the previous one; an empty area ends the watch and all work for it.
    /// `changed` is called once, with the changed part in pixels of the area; call `rearm` for the next change.
    void watch(const ScreenRect &area, std::function<void(const QRect &)> changed);
    void rearm();

private:
    struct Watched
    {
        QRect frame; ///< native pixels, including the border
        xcb_damage_damage_t damage = 0;
        bool isDamaged = false;
    };

    void start();
    void stop();
    void addWindow(xcb_window_t window);
    bool isOurs(xcb_window_t window);
    void handle(const xcb_generic_event_t &event);
    void reportIfInside(const QRect &native);
    void awaitDamage();

    const X11ResourceRange m_ours;
    const std::function<QRect(const ScreenRect &)> m_toNative;
    std::unique_ptr<X11EventConnection> m_connection; ///< only while an area is watched
    xcb_atom_t m_desktopPicture = XCB_ATOM_NONE;
    quint8 m_damageEvent = 0;
    QHash<xcb_window_t, Watched> m_windows; ///< mapped windows of other programs
    QRect m_area;
    Callback<const QRect &> m_changed;
    bool m_isArmed = false;
    QRect m_missed; ///< what has changed between a report and the next `rearm`; native pixels
};

} // namespace lucentra
