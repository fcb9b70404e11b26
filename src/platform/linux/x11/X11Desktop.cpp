#include "X11Desktop.h"

#include "SessionBus.h"
#include "StatusNotifierHost.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Whether there is a tray that embeds windows: it owns a selection.
bool ownsTraySelection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return false;
    xcb_connection_t *c = x11->connection();
    const auto owner =
        x11Ask(c, xcb_get_selection_owner, xcb_get_selection_owner_reply, x11Atom(c, "_NET_SYSTEM_TRAY_S0"));
    return owner && owner->owner;
}

X11Display displayOf(const QScreen *screen)
{
    // A screen's corner is the same in points and in pixels; only its size is scaled.
    const double scale = screen->devicePixelRatio();
    return {.nativeFrame = {screen->geometry().topLeft(), (QSizeF(screen->geometry().size()) * scale).toSize()},
            .scale = scale};
}

/// Native pixels of an area in global points.
QRect toNative(const ScreenRect &area)
{
    const QScreen *screen = QGuiApplication::screenAt(area.center().toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const X11Display display = displayOf(screen);
    const QPointF corner = display.nativeFrame.topLeft();
    return QRectF((area.topLeft() - corner) * display.scale + corner, area.size() * display.scale).toAlignedRect();
}

} // namespace

X11Desktop::X11Desktop(Scheduler &scheduler, SessionBus &bus, MainQueue &mainQueue,
                       const std::function<QString(const QString &)> &localized)
    : m_bus(bus)
    , m_capture(ownResources())
    , m_changes(ownResources(), toNative)
    , m_stream(streamSource(), mainQueue, scheduler)
    , m_hotkeys(scheduler)
{
    m_capture.explainMissing([localized](const QString &names) {
        return localized(u"這個 X 伺服器缺少擷取畫面所需的功能：%@"_s).replace(u"%@"_s, names);
    });
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &X11Desktop::watch);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Desktop::updateDisplays);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Desktop::updateDisplays);
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
}

X11ResourceRange X11Desktop::ownResources()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return {};
    const xcb_setup_t *setup = xcb_get_setup(x11->connection());
    return {setup->resource_id_base, setup->resource_id_mask};
}

X11ScreenStream::Source X11Desktop::streamSource()
{
    return {.watch =
                [this](const ScreenRect &area, std::function<void(const QRect &)> changed) {
                    m_capture.setPaneShown(!area.isEmpty());
                    m_changes.watch(area, std::move(changed));
                },
            .rearm = [this] { m_changes.rearm(); },
            .displayAt = [this](const QPointF &point) { return m_capture.displayAt(point).frame(); },
            .capture = [this](const ScreenRect &area) { return m_capture.capture(area).value_or(QImage()); }};
}

bool X11Desktop::hasTray() const
{
    return hasStatusNotifierHost(m_bus.connection()) || ownsTraySelection();
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
    m_capture.setDisplays(displays);
}

} // namespace lucentra
