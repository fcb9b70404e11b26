#include "LayerPaneHints.h"

#include "LayerSurface.h"
#include "PopupSurface.h"
#include "SharedBuffer.h"
#include "WaylandConnection.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMenu>
#include <QScreen>
#include <QWindow>

#include <wayland-client.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace lucentra {

namespace {

Q_LOGGING_CATEGORY(layerCategory, "lucentra.capture", QtInfoMsg)

/// Moves after which no relative motion is to be expected. It may be reported after the first.
constexpr int fewMoves = 3;

QScreen *screenOf(const QRect &frame)
{
    QScreen *screen = QGuiApplication::screenAt(frame.center());
    return screen ? screen : QGuiApplication::primaryScreen();
}

/// The frame itself, or the nearest place on the main screen if its centre is on none. While all outputs are gone, the
/// main screen is empty.
QRect withinReach(QRect frame)
{
    const QScreen *main = QGuiApplication::primaryScreen();
    const QRect screen = main ? main->geometry() : QRect();
    if (screen.isEmpty() || QGuiApplication::screenAt(frame.center()))
        return frame;
    frame.moveRight(std::min(frame.right(), screen.right()));
    frame.moveBottom(std::min(frame.bottom(), screen.bottom()));
    frame.moveTopLeft({std::max(frame.left(), screen.left()), std::max(frame.top(), screen.top())});
    return frame;
}

/// The nearest place on any screen.
QPointF onScreens(QPointF point)
{
    QRect all;
    for (const QScreen *screen : QGuiApplication::screens())
        all |= screen->geometry();
    return {std::clamp(point.x(), double(all.left()), double(all.right())),
            std::clamp(point.y(), double(all.top()), double(all.bottom()))};
}

bool isPopup(const QWidget &widget)
{
    const Qt::WindowType type = widget.windowType();
    return widget.isWindow() && (type == Qt::Popup || type == Qt::ToolTip);
}

} // namespace

LayerPaneHints::LayerPaneHints(WaylandConnection &connection)
    : m_connection(connection)
    , m_pointer(connection)
{
    m_pointer.onPressed = [this] { pressed(); };
    m_pointer.onReleased = [this] { released(); };
    m_pointer.onTravelled = [this](QPointF travel) { travelled(travel); };
    m_pointer.onMoved = [this] { movedOnSurface(); };
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &LayerPaneHints::watchScreen);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LayerPaneHints::followScreensLater);
    for (QScreen *screen : QGuiApplication::screens())
        watchScreen(screen);
}

LayerPaneHints::~LayerPaneHints() = default;

std::optional<QRect> LayerPaneHints::paneFrame() const
{
    const std::lock_guard lock(m_frameMutex);
    return m_hasRole ? std::optional(m_frame) : std::nullopt;
}

void LayerPaneHints::setFrame(const QRect &frame)
{
    const std::lock_guard lock(m_frameMutex);
    m_frame = frame;
    m_hasRole = m_role != nullptr;
}

void LayerPaneHints::prepare(QWidget &window)
{
    m_pane = &window;
    setFrame(window.geometry());
    // The toolkit then gives the surface no role of its own.
    window.setWindowFlag(Qt::BypassWindowManagerHint);
}

bool LayerPaneHints::eventFilter(QObject *watched, QEvent *event)
{
    // What the pointer does is known here before the toolkit acts on it.
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseMove ||
        event->type() == QEvent::MouseButtonRelease)
        m_connection.queue().dispatchPending();
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        const auto &widget = static_cast<const QWidget &>(*watched);
        if (isPopup(widget)) {
            QWindow *parent = parentOfPopup(widget);
            widget.windowHandle()->setFlag(Qt::BypassWindowManagerHint, parent != nullptr);
            if (parent)
                widget.windowHandle()->setTransientParent(parent);
        }
    } else if (event->type() == QEvent::Expose && watched->isWindowType()) {
        // Before the toolkit draws its first picture: a surface gets its role without one.
        exposed(static_cast<QWindow &>(*watched));
    }
    return QObject::eventFilter(watched, event);
}

void LayerPaneHints::exposed(QWindow &window)
{
    if (!window.isExposed() || !m_pane)
        return;
    if (&window == m_pane->windowHandle() && !m_role)
        givePaneRole();
    else if (&window != m_pane->windowHandle() && window.flags() & Qt::BypassWindowManagerHint &&
             !m_popups.contains(&window))
        givePopupRole(window);
}

void LayerPaneHints::givePaneRole()
{
    QWindow &window = *m_pane->windowHandle();
    wl_surface *surface = WaylandConnection::surfaceOf(window);
    setFrame(withinReach(m_frame)); // its output may be gone
    m_screen = screenOf(m_frame);
    wl_output *output = m_screen ? WaylandConnection::outputOf(*m_screen) : nullptr;
    if (!surface || !output)
        return;
    m_screenCorner = m_screen->geometry().topLeft();
    m_pane->setGeometry(m_frame); // the toolkit puts new windows at the corner of the screen
    m_role = std::make_unique<LayerSurface>(m_connection.queue(), surface, output,
                                            m_frame.translated(-m_screenCorner));
    m_role->onClosed = [this] { QMetaObject::invokeMethod(this, [this] { renewPaneRole(); }, Qt::QueuedConnection); };
    setFrame(m_frame);
}

void LayerPaneHints::withdrawPaneRole()
{
    m_popups.clear();
    m_role.reset();
    m_nothing.reset();
    m_isDragged = false;
    released(); // the release of a button that is down would go to another surface
    m_press.reset();
    setFrame(m_frame);
}

void LayerPaneHints::renewPaneRole()
{
    if (!m_pane || !m_pane->isVisible())
        return;
    QWindow &window = *m_pane->windowHandle();
    wl_surface *surface = WaylandConnection::surfaceOf(window);
    if (!surface)
        return;
    withdrawPaneRole();
    // A surface can get its role again if it has no picture.
    wl_surface_attach(surface, nullptr, 0, 0);
    wl_surface_commit(surface);
    givePaneRole();
    m_pane->repaint();
}

void LayerPaneHints::watchScreen(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &LayerPaneHints::followScreensLater);
    followScreensLater();
}

void LayerPaneHints::followScreensLater()
{
    // The toolkit first moves its own windows from a screen that is gone.
    QMetaObject::invokeMethod(this, &LayerPaneHints::followScreens, Qt::QueuedConnection);
}

void LayerPaneHints::followScreens()
{
    if (!m_role || !m_screen) {
        renewPaneRole();
        return;
    }
    const QPoint moved = m_screen->geometry().topLeft() - std::exchange(m_screenCorner, m_screen->geometry().topLeft());
    if (const QRect frame = withinReach(m_frame.translated(moved)); m_pane && frame != m_frame)
        place(*m_pane, frame);
}

QWindow *LayerPaneHints::parentOfPopup(const QWidget &popup) const
{
    if (!m_pane || !m_role)
        return nullptr;
    if (const auto *menu = qobject_cast<const QMenu *>(&popup)) {
        for (const QObject *owner : menu->menuAction()->associatedObjects()) {
            const auto *widget = qobject_cast<const QWidget *>(owner);
            if (widget && m_popups.contains(widget->windowHandle()))
                return widget->windowHandle();
        }
    }
    const QWidget *parent = popup.parentWidget();
    const bool isOfPane = parent ? parent->window() == m_pane : isOverPane();
    return isOfPane ? m_pane->windowHandle() : nullptr;
}

void LayerPaneHints::givePopupRole(QWindow &window)
{
    wl_surface *surface = WaylandConnection::surfaceOf(window);
    const QWindow *parent = window.transientParent();
    if (!surface || !m_role || !parent)
        return;
    const auto parentPopup = m_popups.find(const_cast<QWindow *>(parent));
    const bool isOverPopup = parentPopup != m_popups.end();
    const QPoint origin = isOverPopup ? parent->geometry().topLeft() : m_frame.topLeft();
    const quint32 grabSerial = window.type() == Qt::Popup ? m_pointer.pressSerial() : 0;
    auto role = std::make_unique<PopupSurface>(
        m_connection.queue(), surface,
        PopupSurface::Parent{.layer = isOverPopup ? nullptr : m_role->get(),
                             .popup = isOverPopup ? parentPopup->second->get() : nullptr},
        window.geometry().translated(-origin), grabSerial);
    role->onDone = [popup = QPointer(&window)] {
        QMetaObject::invokeMethod(qGuiApp, [popup] {
            if (popup)
                popup->close();
        }, Qt::QueuedConnection);
    };
    m_popups[&window] = std::move(role);
    // This comes before the toolkit destroys the surface, which must lose its role first.
    connect(&window, &QWindow::visibleChanged, this, [this, &window] { m_popups.erase(&window); },
            Qt::SingleShotConnection);
}

void LayerPaneHints::place(QWidget &window, const QRect &frame)
{
    if (&window != m_pane || frame == m_frame) {
        window.setGeometry(frame);
        return;
    }
    setFrame(frame);
    window.setGeometry(frame);
    if (!m_role)
        return;
    // During a drag the surface stays on its output: another one would end the drag.
    if (!m_isDragged && screenOf(frame) != m_screen)
        renewPaneRole();
    else if (m_screen)
        m_role->place(frame.translated(-m_screen->geometry().topLeft()));
    if (m_isDragged)
        m_connection.queue().afterRequests(this, [this, corner = frame.topLeft()] { m_confirmedCorner = corner; });
}

void LayerPaneHints::setHoldHandler(const QWindow &window, std::function<void(bool)> handler)
{
    m_hold = std::move(handler);
    // This comes before the toolkit destroys the surface, which must lose its role first.
    connect(&window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            withdrawPaneRole();
    });
}

bool LayerPaneHints::isOverPane() const
{
    return m_role && m_pane && m_pointer.surface() &&
           m_pointer.surface() == WaylandConnection::surfaceOf(*m_pane->windowHandle());
}

void LayerPaneHints::pressed()
{
    if (!isOverPane())
        return;
    const QPointF pointer = m_frame.topLeft() + m_pointer.place();
    m_press = Drag{.window = {m_frame, pointer.toPoint(), {}}, .pointer = pointer};
    m_isHeld = true;
    m_isDragged = false;
    m_movesWithoutTravel = 0;
    m_confirmedCorner = m_frame.topLeft();
    if (m_hold)
        m_hold(true);
}

void LayerPaneHints::released()
{
    if (!m_isHeld)
        return;
    m_isHeld = false;
    endDrag();
    if (m_hold)
        m_hold(false);
}

void LayerPaneHints::endDrag()
{
    if (std::exchange(m_isDragged, false) && screenOf(m_frame) != m_screen)
        QMetaObject::invokeMethod(this, [this] { renewPaneRole(); }, Qt::QueuedConnection);
}

bool LayerPaneHints::startResize(QWindow &window, Qt::Edges edges)
{
    if (!m_press || !m_pane || &window != m_pane->windowHandle())
        return false;
    m_press->window.edges = edges;
    m_isDragged = true;
    drag();
    if (!m_isHeld) // the toolkit heard of a quick drag when it was over
        endDrag();
    return true;
}

void LayerPaneHints::travelled(QPointF travel)
{
    if (!m_isHeld)
        return;
    m_movesWithoutTravel = std::numeric_limits<int>::min();
    // The pointer stops at the edge of the screens, its travel doesn't.
    m_press->pointer = onScreens(m_press->pointer + travel);
    drag();
}

void LayerPaneHints::movedOnSurface()
{
    // KWin reports no relative motion for tablets and virtual machines. Its places on the surface take into account
    // where it has put the surface since the press.
    if (!m_isHeld || ++m_movesWithoutTravel < fewMoves)
        return;
    m_press->pointer = m_confirmedCorner + m_pointer.place();
    drag();
}

void LayerPaneHints::drag()
{
    if (m_isDragged && m_pane)
        place(*m_pane, m_press->window.frameFor(m_press->pointer.toPoint(), m_pane->minimumSize()));
}

bool LayerPaneHints::hasInputFocus(const QWindow &window) const
{
    return QGuiApplication::focusWindow() == &window;
}

void LayerPaneHints::setAbove(const QWindow &window, bool isAbove)
{
    if (!m_role || !m_screen)
        return;
    // No window can be put above the pane, nor a dialog beside it: compositors show it in the middle of the screen. A
    // pane that leaves room stays where it is.
    const QSize pane = m_frame.size();
    const QSize screen = m_screen->size();
    const bool coversScreen = 2 * pane.width() > screen.width() && 2 * pane.height() > screen.height();
    const bool coversDialog = window.type() == Qt::Dialog && m_frame.contains(m_screen->geometry().center());
    m_role->setLayer(isAbove && (coversScreen || coversDialog) ? LayerSurface::Layer::BelowWindows : LayerSurface::Layer::AboveAll);
}

void LayerPaneHints::activate(const QWindow &window)
{
    if (!m_pane || &window != m_pane->windowHandle())
        const_cast<QWindow &>(window).requestActivate();
}

bool LayerPaneHints::conceal(Concealment what)
{
    if (!m_role || !m_pane)
        return false;
    if (m_concealments++ > 0)
        return true;
    wl_surface *surface = WaylandConnection::surfaceOf(*m_pane->windowHandle());
    const QSize size = (QSizeF(m_pane->size()) * m_pane->devicePixelRatioF()).toSize();
    m_isPointerConcealed = what == Concealment::PaneAndPointer && isOverPane();
    if (m_isPointerConcealed)
        QGuiApplication::setOverrideCursor(Qt::BlankCursor);
    m_pane->setUpdatesEnabled(false);
    if (!m_nothing || m_nothing->size() != size)
        m_nothing = std::make_unique<SharedBuffer>(m_connection.globals().shm, size, size.width() * 4,
                                                   WL_SHM_FORMAT_ARGB8888);
    wl_surface_attach(surface, m_nothing->get(), 0, 0);
    wl_surface_damage(surface, 0, 0, m_pane->width(), m_pane->height());
    wl_surface_commit(surface);
    m_connection.queue().flush();
    m_concealed.start();
    return true;
}

void LayerPaneHints::reveal()
{
    if (m_concealments == 0 || --m_concealments > 0 || !m_pane)
        return;
    if (std::exchange(m_isPointerConcealed, false))
        QGuiApplication::restoreOverrideCursor();
    m_pane->setUpdatesEnabled(true);
    m_pane->repaint();
    qCDebug(layerCategory) << "pane invisible for" << m_concealed.elapsed() << "ms";
}

} // namespace lucentra
