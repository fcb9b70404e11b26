#include "MakeDesktop.h"

#include "LayerDesktop.h"
#include "PortalDesktop.h"
#include "X11Connection.h"
#include "X11Desktop.h"
#include "X11ProgramClaim.h"

#include <QGuiApplication>

#include <thread>

#include <wayland-client.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

bool isWaylandDisplayThere()
{
    wl_display *display = wl_display_connect(nullptr);
    if (!display)
        return false;
    const bool answers =
        wl_display_roundtrip(display) >= 0; // a compositor that is about to end still takes connections for a moment
    wl_display_disconnect(display);
    return answers;
}

bool isX11DisplayThere()
{
    const X11Connection connection(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(connection.get()) == 0;
}

/// The environment can force the choice, for troubleshooting and tests.
bool isLayerPaneChosen()
{
    const QByteArray forced = qgetenv("LUCENTRA_PLATFORM");
    if (!isWaylandSession() || (!forced.isEmpty() && forced != "layer"))
        return false;
    const LayerPaneOffer offer = layerPaneOffer();
    return offer == LayerPaneOffer::PaneAndCapture || (offer == LayerPaneOffer::PaneOnly && forced == "layer");
}

bool isPaneNative()
{
    return QGuiApplication::platformName().startsWith(u"wayland"_s);
}

} // namespace

bool isWaylandSession()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

std::optional<QString> prepareDesktop()
{
    if (isLayerPaneChosen()) {
        prepareLayerPane();
        return std::nullopt;
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return isWaylandSession() ? u"Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。"_s
                                  : u"Lucentra 需要圖形桌面（沒有設定 DISPLAY）。"_s;
    // A compositor lets no ordinary window of Wayland choose its place or stay above others.
    qputenv("QT_QPA_PLATFORM", "xcb");
    return std::nullopt;
}

std::unique_ptr<Desktop> makeDesktop(const DesktopParts &parts)
{
    if (isPaneNative())
        return std::make_unique<LayerDesktop>(parts.bus, parts.localized);
    if (isWaylandSession())
        return std::make_unique<PortalDesktop>(parts.scheduler, parts.bus, parts.mainQueue, parts.screenShares,
                                               parts.localized);
    return std::make_unique<X11Desktop>(parts.scheduler, parts.bus, parts.mainQueue, parts.localized);
}

bool waitForDisplay(std::chrono::milliseconds patience)
{
    constexpr auto interval = 200ms;
    if (!isWaylandSession())
        return false;
    const bool isNative = isPaneNative();
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!(isNative ? isWaylandDisplayThere() : isX11DisplayThere())) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(interval);
    }
    return true;
}

std::unique_ptr<ProgramClaim> makeProgramClaim(bool hasBus)
{
    if (hasBus && isPaneNative())
        return nullptr;
    return std::make_unique<X11ProgramClaim>();
}

} // namespace lucentra
