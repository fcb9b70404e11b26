#pragma once

#include <QMargins>
#include <QRect>

#include <functional>

struct wl_output;
struct wl_surface;
struct zwlr_layer_surface_v1;

namespace lucentra {

class WaylandQueue;

/// The role of a layer surface for a surface of the toolkit's without a role. A layer surface belongs to one output and
/// is placed on it by the program. Places are logical pixels relative to the output's top-left corner.
class LayerSurface
{
public:
    enum class Layer { BelowWindows, AboveAll };

    /// Gives the surface, which has no buffer yet, the role, and waits until the compositor has configured it. Keys go to it
    /// while the user works with it. A null output leaves the choice to the compositor.
    LayerSurface(WaylandQueue &queue, wl_surface *surface, wl_output *output, const QRect &place);
    ~LayerSurface();
    LayerSurface(const LayerSurface &) = delete;
    LayerSurface &operator=(const LayerSurface &) = delete;

    zwlr_layer_surface_v1 *get() const { return m_role; }
    bool isConfigured() const { return m_isConfigured; }

    /// Another size takes effect with the next picture that is drawn, so that both change at once.
    void place(const QRect &place);
    void setLayer(Layer layer);

    /// The compositor has closed the surface: its output is gone.
    std::function<void()> onClosed;

private:
    void commit();
    void applyPlace();
    void takeKeysOnDemand();

    WaylandQueue &m_queue;
    wl_surface *m_surface;
    zwlr_layer_surface_v1 *m_role;
    QRect m_place;
    bool m_isConfigured = false;
};

} // namespace lucentra
