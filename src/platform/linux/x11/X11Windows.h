#pragma once

#include "X11Connection.h"

#include <QList>
#include <QRect>
#include <QSize>

namespace lucentra {

/// The range of resource ids of one client's connection.
struct X11ResourceRange
{
    quint32 base = 0;
    quint32 mask = 0;

    bool contains(quint32 id) const { return mask != 0 && (id & ~mask) == base; }
};

/// The place of a window without its border: native pixels, relative to the root window.
struct X11WindowPlace
{
    xcb_window_t window = XCB_WINDOW_NONE;
    QRect frame;
};

/// A child of the root window. Native pixels.
struct X11TopLevel
{
    xcb_window_t window;
    xcb_visualid_t visual;
    QPoint origin; ///< outer corner, including the border, in the root window
    QSize size;    ///< including the border
    int border;
    bool isShaped;
    quint16 opacity; ///< 0xffff is opaque
};

/// Lists the windows of a screen. Blocking calls on a connection that the caller owns; one thread at a time. Windows
/// that appear, vanish or change meanwhile may be missing or outdated.
class X11Windows
{
public:
    /// `ours` are the ids of the connection that this program's windows belong to.
    X11Windows(xcb_connection_t *connection, const xcb_screen_t *screen, X11ResourceRange ours);

    /// The viewable windows, including ours: those that the window manager lists, and the children of the root.
    QList<X11WindowPlace> viewable() const;

    /// The viewable children of the root that intersect an area and contain no window of ours, bottom to top.
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
