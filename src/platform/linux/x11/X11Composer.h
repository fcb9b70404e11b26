#pragma once

#include "X11Windows.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QStringList>

#include <xcb/render.h>

#include <chrono>
#include <optional>
#include <unordered_map>

namespace lucentra {

/// Composes the screen's content without this program's windows from the pixmaps of the other windows. The screen
/// itself doesn't change.
///
/// Blocking calls on a private connection; one thread at a time. Of windows that appear, vanish or change meanwhile,
/// pixels may be missing.
class X11Composer
{
public:
    /// How long after the first redirection the windows' pixmaps may still be empty. Measured on servers with and
    /// without a compositor.
    static constexpr std::chrono::milliseconds settlingTime{300};

    /// Connects to $DISPLAY. `ours` are the ids of this program's other connection, whose windows are left out.
    explicit X11Composer(X11ResourceRange ours);
    X11Composer(const X11Composer &) = delete;
    X11Composer &operator=(const X11Composer &) = delete;

    /// False if there is no server or it lacks what composing needs.
    bool isUsable() const { return m_missing.isEmpty(); }
    /// What the server lacks: names of extensions, or "ARGB32" for a picture format with transparency.
    QStringList missing() const { return m_missing; }

    /// Makes the server keep a pixmap of every top-level window. Full-screen programs lose their direct path to the
    /// screen meanwhile, so this is enabled only while the pane is shown.
    void setRedirecting(bool redirecting);

    /// See `X11Windows::viewable`.
    QList<X11WindowPlace> viewableWindows();

    /// An area of the root window (native pixels) without our windows. Null if the connection is broken.
    QImage compose(const QRect &area);

private:
    QStringList missingExtensions() const;
    void prepareExtensions();
    void paintBackground(xcb_render_picture_t target, const QRect &area);
    void paintPlainBackground(xcb_render_picture_t target, const QRect &area);
    xcb_render_color_t rootColour(QPoint place);
    void blend(const X11TopLevel &window, xcb_render_picture_t target, const QRect &area);
    void drainErrors();

    X11Connection m_connection;
    const X11ResourceRange m_ours;
    xcb_screen_t *m_screen = nullptr;
    QStringList m_missing{QStringLiteral("$DISPLAY")};
    bool m_redirecting = false;
    std::chrono::steady_clock::time_point m_redirectedAt;
    std::unordered_map<xcb_visualid_t, xcb_render_pictformat_t> m_formats;
    xcb_render_pictformat_t m_argbFormat = 0;
    xcb_atom_t m_rootPixmap = 0;
    std::optional<X11Windows> m_windows; ///< while usable
};

} // namespace lucentra
