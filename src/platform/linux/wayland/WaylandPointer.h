#pragma once

#include <QPointF>

#include <cstdint>
#include <functional>

struct wl_pointer;
struct wl_surface;
struct zwp_relative_pointer_v1;

namespace lucentra {

class WaylandConnection;

/// The pointer as the compositor reports it for this program's surfaces, beside what the toolkit makes of it. The
/// travel of relative motions means the same with every compositor while the surface beneath the pointer is moved.
class WaylandPointer
{
public:
    explicit WaylandPointer(WaylandConnection &connection);
    ~WaylandPointer();
    WaylandPointer(const WaylandPointer &) = delete;
    WaylandPointer &operator=(const WaylandPointer &) = delete;

    /// Whether a button that was pressed over one of this program's surfaces is still down.
    bool isButtonDown() const { return m_buttonsDown > 0; }
    /// The surface beneath the pointer; null if it is none of this program's.
    wl_surface *surface() const { return m_surface; }
    /// The place on that surface, logical pixels.
    QPointF place() const { return m_place; }
    /// The serial of the last press, for popups.
    quint32 pressSerial() const { return m_pressSerial; }

    // Any of these may be empty.
    std::function<void()> onPressed;          ///< the first button
    std::function<void()> onReleased;         ///< the last button
    std::function<void(QPointF)> onTravelled; ///< relative motion, logical pixels
    std::function<void()> onMoved;            ///< `place` has changed

private:
    void seatChanged(uint32_t capabilities);
    void obtain();
    void drop();
    void button(uint32_t serial, bool isDown);

    WaylandConnection &m_connection;
    wl_pointer *m_pointer = nullptr;
    zwp_relative_pointer_v1 *m_relative = nullptr;
    wl_surface *m_surface = nullptr;
    QPointF m_place;
    quint32 m_pressSerial = 0;
    int m_buttonsDown = 0;
};

} // namespace lucentra
