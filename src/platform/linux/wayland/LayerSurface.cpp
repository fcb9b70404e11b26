#include "LayerSurface.h"

#include "WaylandConnection.h"

#include <wlr-layer-shell-unstable-v1-client.h>

#include <utility>

namespace lucentra {

namespace {

/// Longest wait for the compositor's answer to a new surface, in milliseconds.
constexpr int configurePatience = 2000;

} // namespace

LayerSurface::LayerSurface(WaylandQueue &queue, wl_surface *surface, wl_output *output, const QRect &place)
    : m_queue(queue)
    , m_surface(surface)
    , m_role(zwlr_layer_shell_v1_get_layer_surface(queue.globals().layerShell, surface, output,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "lucentra"))
    , m_place(place)
{
    static const zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void *self, zwlr_layer_surface_v1 *role, uint32_t serial, uint32_t, uint32_t) {
                zwlr_layer_surface_v1_ack_configure(role, serial);
                static_cast<LayerSurface *>(self)->m_isConfigured = true;
            },
        .closed =
            [](void *self, zwlr_layer_surface_v1 *) {
                if (const auto &closed = static_cast<LayerSurface *>(self)->onClosed)
                    closed();
            },
    };
    zwlr_layer_surface_v1_add_listener(m_role, &listener, this);
    zwlr_layer_surface_v1_set_anchor(m_role,
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    zwlr_layer_surface_v1_set_exclusive_zone(m_role, -1); // panels don't push it aside
    applyPlace();
    takeKeysOnDemand();
    commit();
    m_queue.waitUntil([this] { return m_isConfigured; }, configurePatience);
}

LayerSurface::~LayerSurface()
{
    zwlr_layer_surface_v1_destroy(m_role);
    m_queue.flush();
}

void LayerSurface::place(const QRect &place)
{
    const bool isResized = std::exchange(m_place, place).size() != place.size();
    applyPlace();
    if (!isResized)
        commit();
}

void LayerSurface::setLayer(Layer layer)
{
    if (zwlr_layer_surface_v1_get_version(m_role) < ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION)
        return;
    zwlr_layer_surface_v1_set_layer(m_role, layer == Layer::AboveAll ? ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY
                                                                     : ZWLR_LAYER_SHELL_V1_LAYER_BOTTOM);
    commit();
}

void LayerSurface::commit()
{
    wl_surface_commit(m_surface);
    m_queue.flush();
}

void LayerSurface::applyPlace()
{
    zwlr_layer_surface_v1_set_size(m_role, uint32_t(m_place.width()), uint32_t(m_place.height()));
    zwlr_layer_surface_v1_set_margin(m_role, m_place.y(), 0, 0, m_place.x());
}

void LayerSurface::takeKeysOnDemand()
{
    // Before version 4 there is only "exclusive", with which KWin means the same.
    quint32 interactivity = ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE;
    if (zwlr_layer_surface_v1_get_version(m_role) >= 4)
        interactivity = ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND;
    else if (m_queue.globals().isKWin)
        interactivity = ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE;
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_role, interactivity);
}

} // namespace lucentra
