#pragma once

#include <QRect>

#include <functional>

struct wl_surface;
struct xdg_popup;
struct xdg_surface;
struct zwlr_layer_surface_v1;

namespace lucentra {

class WaylandQueue;

/// The role of a popup (a menu or a tool tip) over the layer surface, or over another popup, for a surface of the
/// toolkit's without a role.
class PopupSurface
{
public:
    struct Parent
    {
        zwlr_layer_surface_v1 *layer = nullptr; ///< one of these two
        xdg_surface *popup = nullptr;
    };

    /// `place` is relative to the parent. With a serial of a click, the popup gets all input until it is closed.
    PopupSurface(WaylandQueue &queue, wl_surface *surface, Parent parent, const QRect &place, quint32 grabSerial);
    ~PopupSurface();
    PopupSurface(const PopupSurface &) = delete;
    PopupSurface &operator=(const PopupSurface &) = delete;

    xdg_surface *get() const { return m_surface; }

    /// The user has clicked elsewhere.
    std::function<void()> onDone;

private:
    WaylandQueue &m_queue;
    xdg_surface *m_surface;
    xdg_popup *m_popup;
    bool m_isConfigured = false;
};

} // namespace lucentra
