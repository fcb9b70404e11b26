#include "X11Desktop.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QScreen>

namespace lucentra {

namespace {

/// The ids of the windows that the toolkit makes for us.
X11ResourceRange ownResources()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return {};
    const xcb_setup_t *setup = xcb_get_setup(x11->connection());
    return {setup->resource_id_base, setup->resource_id_mask};
}

X11Display displayOf(const QScreen *screen)
{
    // A screen's corner is the same in points and in pixels; only its size is scaled.
    const double scale = screen->devicePixelRatio();
    return {.nativeFrame = {screen->geometry().topLeft(), (QSizeF(screen->geometry().size()) * scale).toSize()},
            .scale = scale};
}

/// Native pixels of an area in global points.
QRect toNative(const QRectF &area)
{
    const QScreen *screen = QGuiApplication::screenAt(area.center().toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const X11Display display = displayOf(screen);
    const QPointF corner = display.nativeFrame.topLeft();
    return QRectF((area.topLeft() - corner) * display.scale + corner, area.size() * display.scale).toAlignedRect();
}

} // namespace

X11Desktop::X11Desktop(Scheduler &scheduler)
    : capture(ownResources())
    , changes(ownResources(), toNative)
    , hotkeys(scheduler)
    , displayOptions(QDBusConnection::sessionBus())
{
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &X11Desktop::watch);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Desktop::updateDisplays);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Desktop::updateDisplays);
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
}

void X11Desktop::watch(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &X11Desktop::updateDisplays);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Desktop::updateDisplays);
    updateDisplays();
}

void X11Desktop::updateDisplays()
{
    QList<X11Display> displays;
    for (const QScreen *screen : QGuiApplication::screens())
        displays.append(displayOf(screen));
    capture.setDisplays(displays);
}

} // namespace lucentra
