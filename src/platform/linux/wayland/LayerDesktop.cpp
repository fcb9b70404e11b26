#include "LayerDesktop.h"

#include "KWinScreenshot.h"
#include "SessionBus.h"
#include "StatusNotifierHost.h"

#include <wayland-client.h>

namespace lucentra {

LayerPaneOffer layerPaneOffer()
{
    wl_display *display = wl_display_connect(nullptr);
    if (!display)
        return LayerPaneOffer::None;
    const WaylandGlobals globals = WaylandQueue(display).globals();
    wl_display_disconnect(display);
    if (!globals.canHoldPane())
        return LayerPaneOffer::None;
    return globals.screencopy || (globals.isKWin && isKWinScreenshotAllowed()) ? LayerPaneOffer::PaneAndCapture
                                                                               : LayerPaneOffer::PaneOnly;
}

void prepareLayerPane()
{
    qputenv("QT_QPA_PLATFORM", "wayland;xcb"); // the plugin may be missing
    // Windows with this hint get no role from the toolkit, and places are what the program says.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
    qputenv("QT_WAYLAND_DISABLE_FIXED_POSITIONS", "1");
    // A compositor that is busy for a tenth of a second hasn't hidden the windows. Milliseconds.
    qputenv("QT_WAYLAND_FRAME_CALLBACK_TIMEOUT", "5000");
}

LayerDesktop::LayerDesktop(SessionBus &bus, const std::function<QString(const QString &)> &localized)
    : m_bus(bus)
    , m_windows(m_connection)
    , m_capture(m_connection, m_windows)
    , m_hotkeys(bus, nullptr, localized)
{
}

bool LayerDesktop::hasTray() const
{
    return hasStatusNotifierHost(m_bus.connection());
}

} // namespace lucentra
