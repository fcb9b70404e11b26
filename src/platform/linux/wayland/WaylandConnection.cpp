#include "WaylandConnection.h"

#include <relative-pointer-unstable-v1-client.h>
#include <wlr-layer-shell-unstable-v1-client.h>
#include <wlr-screencopy-unstable-v1-client.h>
#include <xdg-shell-client.h>

#include <QAbstractEventDispatcher>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <string_view>
#include <utility>

#include <poll.h>

class QOpenGLContext;

/// The beginning of the toolkit's class, which is the same in all versions of Qt 6. Its header isn't a public one; only
/// virtual functions are called.
class QPlatformNativeInterface : public QObject
{
public:
    virtual void *nativeResourceForIntegration(const QByteArray &resource);
    virtual void *nativeResourceForContext(const QByteArray &resource, QOpenGLContext *context);
    virtual void *nativeResourceForScreen(const QByteArray &resource, QScreen *screen);
    virtual void *nativeResourceForWindow(const QByteArray &resource, QWindow *window);
};

namespace lucentra {

namespace {

/// Binds a global if it has the name of that interface.
template <typename Global>
bool bindIf(Global *&global, wl_registry *registry, uint32_t number, std::string_view name,
            const wl_interface &interface, uint32_t version)
{
    if (global || name != interface.name)
        return false;
    global = static_cast<Global *>(wl_registry_bind(registry, number, &interface, version));
    return true;
}

void bindGlobal(void *data, wl_registry *registry, uint32_t number, const char *interface, uint32_t version)
{
    auto &globals = *static_cast<WaylandGlobals *>(data);
    const std::string_view name(interface);
    if (name == "org_kde_plasma_shell")
        globals.isKWin = true;
    bindIf(globals.compositor, registry, number, name, wl_compositor_interface, 1) ||
        bindIf(globals.shm, registry, number, name, wl_shm_interface, 1) ||
        bindIf(globals.seat, registry, number, name, wl_seat_interface, 1) ||
        bindIf(globals.windows, registry, number, name, xdg_wm_base_interface, 1) ||
        bindIf(globals.layerShell, registry, number, name, zwlr_layer_shell_v1_interface, std::min(version, 4U)) ||
        bindIf(globals.screencopy, registry, number, name, zwlr_screencopy_manager_v1_interface, 1) ||
        bindIf(globals.relativePointers, registry, number, name, zwp_relative_pointer_manager_v1_interface, 1);
}

const wl_registry_listener registryListener{.global = &bindGlobal, .global_remove = [](void *, wl_registry *, uint32_t) {}};

const xdg_wm_base_listener windowsListener{
    .ping = [](void *, xdg_wm_base *windows, uint32_t serial) { xdg_wm_base_pong(windows, serial); }};

} // namespace

WaylandQueue::WaylandQueue(wl_display *display)
    : m_display(display)
    , m_queue(wl_display_create_queue(display))
{
    m_onQueue = static_cast<wl_display *>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(m_onQueue), m_queue);
    m_registry = wl_display_get_registry(m_onQueue);
    wl_registry_add_listener(m_registry, &registryListener, &m_globals);
    roundtrip();
    if (m_globals.windows)
        xdg_wm_base_add_listener(m_globals.windows, &windowsListener, nullptr);
}

WaylandQueue::~WaylandQueue()
{
    if (m_globals.compositor)
        wl_compositor_destroy(m_globals.compositor);
    if (m_globals.shm)
        wl_shm_destroy(m_globals.shm);
    if (m_globals.seat)
        wl_seat_destroy(m_globals.seat);
    if (m_globals.windows)
        xdg_wm_base_destroy(m_globals.windows);
    if (m_globals.layerShell)
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_globals.layerShell)); // its destructor came in version 3
    if (m_globals.screencopy)
        zwlr_screencopy_manager_v1_destroy(m_globals.screencopy);
    if (m_globals.relativePointers)
        zwp_relative_pointer_manager_v1_destroy(m_globals.relativePointers);
    wl_registry_destroy(m_registry);
    wl_proxy_wrapper_destroy(m_onQueue);
    wl_event_queue_destroy(m_queue);
}

void WaylandQueue::flush()
{
    wl_display_flush(m_display);
}

void WaylandQueue::dispatchPending()
{
    wl_display_dispatch_queue_pending(m_display, m_queue);
    flush();
}

void WaylandQueue::afterRequests(QPointer<QObject> context, std::function<void()> then)
{
    struct Call
    {
        QPointer<QObject> context;
        std::function<void()> then;
    };
    static const wl_callback_listener listener{.done = [](void *data, wl_callback *callback, uint32_t) {
        const std::unique_ptr<Call> call(static_cast<Call *>(data));
        wl_callback_destroy(callback);
        if (call->context)
            call->then();
    }};
    wl_callback_add_listener(wl_display_sync(m_onQueue), &listener, new Call{std::move(context), std::move(then)});
    flush();
}

bool WaylandQueue::roundtrip()
{
    return wl_display_roundtrip_queue(m_display, m_queue) >= 0;
}

bool WaylandQueue::waitUntil(const std::function<bool()> &isDone, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!isDone()) {
        // The toolkit's thread reads from the connection as well, so nobody may block in reading.
        if (wl_display_prepare_read_queue(m_display, m_queue) != 0) {
            if (wl_display_dispatch_queue_pending(m_display, m_queue) < 0)
                return false;
            continue;
        }
        flush();
        pollfd readable{.fd = wl_display_get_fd(m_display), .events = POLLIN, .revents = 0};
        if (poll(&readable, 1, int(deadline.remainingTime())) > 0)
            wl_display_read_events(m_display);
        else
            wl_display_cancel_read(m_display);
        if (wl_display_dispatch_queue_pending(m_display, m_queue) < 0 || (deadline.hasExpired() && !isDone()))
            return false;
    }
    return true;
}

WaylandConnection::WaylandConnection()
    : m_queue(std::make_unique<WaylandQueue>(static_cast<wl_display *>(
          QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"))))
{
    // The toolkit's thread puts the events into their queues and wakes the event loop.
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_queue->dispatchPending(); });
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { m_queue->dispatchPending(); });
}

wl_surface *WaylandConnection::surfaceOf(QWindow &window)
{
    return static_cast<wl_surface *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", &window));
}

wl_output *WaylandConnection::outputOf(QScreen &screen)
{
    // While all outputs are gone, the toolkit has an empty screen that belongs to none of them.
    if (screen.geometry().isEmpty())
        return nullptr;
    return static_cast<wl_output *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen("output", &screen));
}

} // namespace lucentra
