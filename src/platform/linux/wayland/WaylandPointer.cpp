#include "WaylandPointer.h"

#include "WaylandConnection.h"

#include <relative-pointer-unstable-v1-client.h>
#include <wayland-client.h>

#include <algorithm>

namespace lucentra {

WaylandPointer::WaylandPointer(WaylandConnection &connection)
    : m_connection(connection)
{
    static const wl_seat_listener listener{
        .capabilities = [](void *self, wl_seat *,
                           uint32_t capabilities) { static_cast<WaylandPointer *>(self)->seatChanged(capabilities); },
        .name = [](void *, wl_seat *, const char *) {},
    };
    wl_seat_add_listener(connection.globals().seat, &listener, this);
    connection.queue().roundtrip();
}

WaylandPointer::~WaylandPointer()
{
    drop();
}

void WaylandPointer::seatChanged(uint32_t capabilities)
{
    const bool hasPointer = capabilities & WL_SEAT_CAPABILITY_POINTER;
    if (hasPointer && !m_pointer)
        obtain();
    else if (!hasPointer)
        drop();
}

void WaylandPointer::obtain()
{
    static const wl_pointer_listener listener{
        .enter =
            [](void *data, wl_pointer *, uint32_t, wl_surface *surface, wl_fixed_t x, wl_fixed_t y) {
                auto &self = *static_cast<WaylandPointer *>(data);
                self.m_surface = surface;
                self.m_place = {wl_fixed_to_double(x), wl_fixed_to_double(y)};
            },
        .leave =
            [](void *data, wl_pointer *, uint32_t, wl_surface *) {
                auto &self = *static_cast<WaylandPointer *>(data);
                self.m_surface = nullptr;
                // The release would go to another surface.
                if (self.m_buttonsDown > 0) {
                    self.m_buttonsDown = 1;
                    self.button(self.m_pressSerial, false);
                }
            },
        .motion =
            [](void *data, wl_pointer *, uint32_t, wl_fixed_t x, wl_fixed_t y) {
                auto &self = *static_cast<WaylandPointer *>(data);
                self.m_place = {wl_fixed_to_double(x), wl_fixed_to_double(y)};
                if (self.onMoved)
                    self.onMoved();
            },
        .button =
            [](void *data, wl_pointer *, uint32_t serial, uint32_t, uint32_t, uint32_t state) {
                static_cast<WaylandPointer *>(data)->button(serial, state == WL_POINTER_BUTTON_STATE_PRESSED);
            },
        .axis = [](void *, wl_pointer *, uint32_t, uint32_t, wl_fixed_t) {},
    };
    static const zwp_relative_pointer_v1_listener relativeListener{
        .relative_motion = [](void *data, zwp_relative_pointer_v1 *, uint32_t, uint32_t, wl_fixed_t x, wl_fixed_t y,
                              wl_fixed_t, wl_fixed_t) {
            const auto &travelled = static_cast<WaylandPointer *>(data)->onTravelled;
            if (travelled)
                travelled({wl_fixed_to_double(x), wl_fixed_to_double(y)});
        }};
    const WaylandGlobals &globals = m_connection.globals();
    m_pointer = wl_seat_get_pointer(globals.seat);
    wl_pointer_add_listener(m_pointer, &listener, this);
    if (!globals.relativePointers)
        return;
    m_relative = zwp_relative_pointer_manager_v1_get_relative_pointer(globals.relativePointers, m_pointer);
    zwp_relative_pointer_v1_add_listener(m_relative, &relativeListener, this);
}

void WaylandPointer::drop()
{
    if (m_relative)
        zwp_relative_pointer_v1_destroy(m_relative);
    if (m_pointer)
        wl_pointer_destroy(m_pointer);
    m_relative = nullptr;
    m_pointer = nullptr;
    m_surface = nullptr;
    m_buttonsDown = 0;
}

void WaylandPointer::button(uint32_t serial, bool isDown)
{
    if (isDown)
        m_pressSerial = serial;
    m_buttonsDown = std::max(0, m_buttonsDown + (isDown ? 1 : -1));
    const auto &report = isDown ? onPressed : onReleased;
    if (report && m_buttonsDown == (isDown ? 1 : 0))
        report();
}

} // namespace lucentra
