#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QScreen;
class QWindow;
struct wl_compositor;
struct wl_display;
struct wl_event_queue;
struct wl_output;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wl_surface;
struct xdg_wm_base;
struct zwlr_layer_shell_v1;
struct zwlr_screencopy_manager_v1;
struct zwp_relative_pointer_manager_v1;

namespace lucentra {

/// The globals of a compositor that this program uses; null if it doesn't offer one.
struct WaylandGlobals
{
    wl_compositor *compositor = nullptr;
    wl_shm *shm = nullptr;
    wl_seat *seat = nullptr;
    xdg_wm_base *windows = nullptr;
    zwlr_layer_shell_v1 *layerShell = nullptr;
    zwlr_screencopy_manager_v1 *screencopy = nullptr;
    zwp_relative_pointer_manager_v1 *relativePointers = nullptr;
    bool isKWin = false;

    /// Whether a pane can be a layer surface.
    bool canHoldPane() const { return compositor && shm && seat && windows && layerShell; }
};

/// An event queue of this program's own on a connection to the compositor. Objects that are made from its globals
/// report on this queue. Any thread, but events are dispatched by one thread at a time.
class WaylandQueue
{
public:
    explicit WaylandQueue(wl_display *display);
    ~WaylandQueue();
    WaylandQueue(const WaylandQueue &) = delete;
    WaylandQueue &operator=(const WaylandQueue &) = delete;

    wl_display *display() const { return m_display; }
    const WaylandGlobals &globals() const { return m_globals; }

    void flush();
    /// Calls the listeners of events that have been read. Never blocks.
    void dispatchPending();
    /// Calls the function, while events are dispatched, when the compositor has handled the requests made so far.
    void afterRequests(QPointer<QObject> context, std::function<void()> then);
    /// Waits until the compositor has handled all requests. Returns false if the connection is broken.
    bool roundtrip();
    /// Handles events until `isDone`. Returns false after that many milliseconds, or if the connection is broken.
    bool waitUntil(const std::function<bool()> &isDone, int milliseconds);

private:
    wl_display *m_display;
    wl_event_queue *m_queue = nullptr;
    wl_display *m_onQueue = nullptr; ///< the display, for objects that report on the queue
    wl_registry *m_registry = nullptr;
    WaylandGlobals m_globals;
};

/// The toolkit's connection to the compositor, with a queue whose events are handled by the main thread's event loop.
class WaylandConnection : public QObject
{
public:
    /// Needs the application object, on the platform "wayland".
    WaylandConnection();

    WaylandQueue &queue() { return *m_queue; }
    const WaylandGlobals &globals() const { return m_queue->globals(); }

    /// The toolkit's surface of a window; null while the window is hidden.
    static wl_surface *surfaceOf(QWindow &window);
    /// Null if the screen is none: at least one output must be there.
    static wl_output *outputOf(QScreen &screen);

private:
    std::unique_ptr<WaylandQueue> m_queue;
};

} // namespace lucentra
