#include "PopupSurface.h"

#include "WaylandConnection.h"

#include <wlr-layer-shell-unstable-v1-client.h>
#include <xdg-shell-client.h>

namespace lucentra {

namespace {

/// Longest wait for the compositor's answer to a new popup, in milliseconds.
constexpr int popupPatience = 2000;

xdg_positioner *positionerFor(xdg_wm_base *windows, const QRect &place)
{
    xdg_positioner *positioner = xdg_wm_base_create_positioner(windows);
    xdg_positioner_set_size(positioner, place.width(), place.height());
    xdg_positioner_set_anchor_rect(positioner, place.x(), place.y(), 1, 1);
    xdg_positioner_set_anchor(positioner, XDG_POSITIONER_ANCHOR_TOP_LEFT);
    xdg_positioner_set_gravity(positioner, XDG_POSITIONER_GRAVITY_BOTTOM_RIGHT);
    xdg_positioner_set_constraint_adjustment(positioner, XDG_POSITIONER_CONSTRAINT_ADJUSTMENT_SLIDE_X |
                                                             XDG_POSITIONER_CONSTRAINT_ADJUSTMENT_SLIDE_Y);
    return positioner;
}

} // namespace

PopupSurface::PopupSurface(WaylandQueue &queue, wl_surface *surface, Parent parent, const QRect &place,
                           quint32 grabSerial)
    : m_queue(queue)
    , m_surface(xdg_wm_base_get_xdg_surface(queue.globals().windows, surface))
{
    static const xdg_surface_listener surfaceListener{
        .configure = [](void *self, xdg_surface *configured, uint32_t serial) {
            xdg_surface_ack_configure(configured, serial);
            static_cast<PopupSurface *>(self)->m_isConfigured = true;
        }};
    static const xdg_popup_listener popupListener{
        .configure = [](void *, xdg_popup *, int32_t, int32_t, int32_t, int32_t) {},
        .popup_done =
            [](void *self, xdg_popup *) {
                if (const auto &done = static_cast<PopupSurface *>(self)->onDone)
                    done();
            },
        .repositioned = [](void *, xdg_popup *, uint32_t) {},
    };
    xdg_surface_add_listener(m_surface, &surfaceListener, this);
    xdg_positioner *positioner = positionerFor(queue.globals().windows, place);
    m_popup = xdg_surface_get_popup(m_surface, parent.popup, positioner);
    xdg_positioner_destroy(positioner);
    xdg_popup_add_listener(m_popup, &popupListener, this);
    if (parent.layer)
        zwlr_layer_surface_v1_get_popup(parent.layer, m_popup);
    if (grabSerial)
        xdg_popup_grab(m_popup, queue.globals().seat, grabSerial);
    wl_surface_commit(surface);
    m_queue.waitUntil([this] { return m_isConfigured; }, popupPatience);
}

PopupSurface::~PopupSurface()
{
    xdg_popup_destroy(m_popup);
    xdg_surface_destroy(m_surface);
    m_queue.flush();
}

} // namespace lucentra
