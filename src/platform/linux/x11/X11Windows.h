#pragma once

#include "X11Connection.h"

#include <QList>
#include <QRect>
#include <QSize>

namespace lucentra {

/// The ids that one client's connection gives its resources.
struct X11ResourceRange
{
    quint32 base = 0;
    quint32 mask = 0;

    bool contains(quint32 id) const { return mask != 0 && (id & ~mask) == base; }
};

/// A window as the X server places it: native pixels, origin at the root window's corner, without its border.
struct X11WindowPlace
{
    xcb_window_t window = XCB_WINDOW_NONE;
    QRect frame;
};

/// A child of the root window: what a compositor works with. Native pixels.
struct X11TopLevel
{
    xcb_window_t window;
    xcb_visualid_t visual;
    QPoint origin; ///< outer corner, with the border, in the root window
    QSize size;    ///< with the border
    int border;
    bool isShaped;
    quint16 opacity; ///< 0xffff is opaque
};

/// Looks at a screen's windows. Blocking calls on a connection that somebody else owns; for one thread at a time.
/// Windows that come, go or change meanwhile are left out or are as they were a moment ago.
class X11Windows
{
public:
    /// `ours` are the ids of this program's other connection.
    X11Windows(xcb_connection_t *connection, const xcb_screen_t *screen, X11ResourceRange ours);

    /// The viewable windows: those that the window manager lists, and the root's own children. Also ours.
    QList<X11WindowPlace> viewable() const;

    /// The viewable children of the root that lie, at least in part, in an area and hold no window of ours; the
    /// lowest first.
    QList<X11TopLevel> foreignTopLevels(const QRect &area) const;

private:
    QList<xcb_window_t> rootChildren() const;
    QList<xcb_window_t> managed() const;
    xcb_window_t rootAncestor(xcb_window_t window) const;
    QList<xcb_window_t> ourTopLevels(const QList<xcb_window_t> &children) const;

    xcb_connection_t *m_connection;
    const xcb_screen_t *m_screen;
    X11ResourceRange m_ours;
    xcb_atom_t m_clientList;
    xcb_atom_t m_opacity;
};

} // namespace lucentra
