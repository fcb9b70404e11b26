#include "TransparentWindow.h"

#include "ControlCapsuleView.h"
#include "GlassView.h"
#include "LocalizationManager.h"
#include "PaneShape.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "WindowButton.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainterPath>
#include <QScreen>
#include <QStyleHints>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The corner of the first of the three buttons, and the distance to the next. Points. The buttons have the capsule's
/// centre line.
constexpr QPoint firstButton{10, 12};
constexpr int buttonStep = 20;

QRect centredOnMainScreen(QSize size)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->geometry() : QRect(0, 0, 1440, 900);
    return {area.topLeft() + QPoint((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

/// An invisible strip along an edge of the window, or a square in a corner, by which the window is resized.
class ResizeHandle : public QWidget
{
public:
    /// `pressed` is called with the edges when the left button goes down on the handle, then, unless the window manager
    /// takes over, `moved` with the pointer's place on the screen, and `released` at the end.
    struct Callbacks
    {
        std::function<void(Qt::Edges, QPoint)> pressed;
        std::function<void(QPoint)> moved;
        std::function<void()> released;
    };

    ResizeHandle(Qt::Edges edges, Callbacks callbacks, QWidget *parent)
        : QWidget(parent)
        , m_edges(edges)
        , m_callbacks(std::move(callbacks))
    {
        setCursor(cursorFor(edges));
    }

    /// Takes its place in a window of that size.
    void placeIn(QSize window)
    {
        // How far the handles reach into the pane. That of the lower right corner covers the drawn grip.
        constexpr int edgeDepth = 5;
        constexpr int cornerDepth = 12;
        constexpr int gripDepth = 22;
        const Qt::Edges sides = m_edges & (Qt::LeftEdge | Qt::RightEdge);
        const Qt::Edges ends = m_edges & (Qt::TopEdge | Qt::BottomEdge);
        const bool isGrip = m_edges == (Qt::RightEdge | Qt::BottomEdge);
        const int depth = isGrip ? gripDepth : sides && ends ? cornerDepth : edgeDepth;
        const QSize size(sides ? depth : window.width(), ends ? depth : window.height());
        setGeometry(m_edges & Qt::RightEdge ? window.width() - depth : 0,
                    m_edges & Qt::BottomEdge ? window.height() - depth : 0, size.width(), size.height());
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton)
            m_callbacks.pressed(m_edges, event->globalPosition().toPoint());
    }

    void mouseMoveEvent(QMouseEvent *event) override { m_callbacks.moved(event->globalPosition().toPoint()); }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton)
            m_callbacks.released();
    }

private:
    const Qt::Edges m_edges;
    const Callbacks m_callbacks;
};

TransparentWindow::TransparentWindow(const Services &services)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_services(services)
    , m_userMoves(services.scheduler,
                  {.isButtonDown = [this] { return m_services.hints.isPointerButtonDown(); },
                   .frame = [this] { return geometry(); },
                   // Some window managers don't report a drag to the window until its end.
                   .held = [this] { frameChanged(); },
                   .released = [this] { endManagersDrag(); }},
                  {.began = [this] { onUserHold(true); },
                   .unchanged = [this] { onUserHold(false); },
                   .moved = [this](std::chrono::milliseconds ago) { onUserMoved(ago); }})
{
    setAttribute(Qt::WA_TranslucentBackground);
    setMinimumSize(smallestSize);
    setGeometry(centredOnMainScreen(initialSize));
    addButtons();
    addResizeHandles();
    retranslate();
    services.texts.observeLanguage(this, [this] { retranslate(); });
    services.hints.prepare(*this);
    create();
    windowHandle()->installEventFilter(this);
    services.hints.setHoldHandler(*windowHandle(), [this](bool isHeld) {
        // An open menu of this program grabs pointer and keyboard.
        m_userMoves.held(isHeld && !QApplication::activePopupWidget());
    });
}

void TransparentWindow::setContentView(GlassView *view)
{
    m_view = view;
    view->onCornersCut = [this](bool cut) {
        m_areCornersCut = cut;
        updateMask();
    };
    view->setParent(this);
    view->setGeometry(rect());
    view->lower();
    view->show();
    view->setFocus(); // otherwise the first button would have the focus
}

void TransparentWindow::makeKeyAndOrderFront()
{
    // If a window manager has taken the window off the screen, only a new window is sure to appear. A window that is
    // just about to appear must stay, since window managers forget the hints of one that is hidden and shown at once.
    if (isVisible() && !isMinimized() && !m_isShown && m_hasAppeared)
        hide();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void TransparentWindow::updatePresence()
{
    if (m_isShown)
        m_services.hints.apply(*windowHandle(), {.isListed = m_services.settings.read(settings::showInDock)});
}

void TransparentWindow::addButtons()
{
    for (const auto kind : {WindowButton::Kind::Close, WindowButton::Kind::Minimize, WindowButton::Kind::Zoom}) {
        auto *button = new WindowButton(kind, this);
        button->move(firstButton + QPoint(buttonStep * int(m_buttons.size()), 0));
        button->installEventFilter(this);
        m_buttons.append(button);
    }
    connect(m_buttons[0], &QAbstractButton::clicked, this, &QWidget::close);
    connect(m_buttons[1], &QAbstractButton::clicked, this,
            m_services.hints.isManaged() ? &QWidget::showMinimized : &QWidget::hide);
    connect(m_buttons[2], &QAbstractButton::clicked, this, &TransparentWindow::zoom);
}

void TransparentWindow::addResizeHandles()
{
    const ResizeHandle::Callbacks callbacks{
        .pressed = [this](Qt::Edges edges, QPoint pointer) { beginResize(edges, pointer); },
        .moved = [this](QPoint pointer) { continueDrag(pointer); },
        .released = [this] { endDrag(); },
    };
    // Corners last, so that they are above the edges.
    for (const Qt::Edges edges : {Qt::Edges(Qt::TopEdge), Qt::Edges(Qt::BottomEdge), Qt::Edges(Qt::LeftEdge),
                                  Qt::Edges(Qt::RightEdge), Qt::TopEdge | Qt::LeftEdge, Qt::TopEdge | Qt::RightEdge,
                                  Qt::BottomEdge | Qt::LeftEdge, Qt::BottomEdge | Qt::RightEdge})
        m_handles.append(new ResizeHandle(edges, callbacks, this));
}

void TransparentWindow::retranslate()
{
    setWindowTitle(m_services.texts.localized(u"Lucentra｜澄鏡通"_s));
    const QString names[]{m_services.texts.localized(u"關閉"_s), m_services.texts.localized(u"縮小"_s),
                          m_services.texts.localized(u"最大化"_s)};
    for (qsizetype i = 0; i < m_buttons.size(); ++i) {
        m_buttons[i]->setAccessibleName(names[i]);
        m_buttons[i]->setToolTip(names[i]);
    }
}

void TransparentWindow::zoom()
{
    m_userMoves.grabbed();
    if (m_services.hints.isManaged()) {
        setWindowState(windowState() ^ Qt::WindowMaximized);
        return;
    }
    const QRect whole = screen()->geometry();
    const QRect next = geometry() == whole ? m_beforeZoom : whole;
    m_beforeZoom = geometry();
    m_services.hints.place(*this, next);
}

void TransparentWindow::beginMove(QPoint pressed, QPoint pointer)
{
    m_userMoves.grabbed();
    const QRect start = geometry();
    // After a quick flick the button is already up, and a window manager would wait for its release in vain.
    if (m_services.hints.isPointerButtonDown() || !m_services.hints.isManaged()) {
        m_services.hints.place(*this,
                               start.translated(pointer - pressed)); // the window manager's drag starts at the pointer
        m_isManagersDrag = m_services.hints.startMove(*windowHandle());
    }
    if (!m_isManagersDrag)
        m_drag = WindowDrag{start, pressed, {}};
}

void TransparentWindow::beginResize(Qt::Edges edges, QPoint pointer)
{
    m_userMoves.grabbed();
    m_isManagersDrag = (m_services.hints.isPointerButtonDown() || !m_services.hints.isManaged()) &&
                       m_services.hints.startResize(*windowHandle(), edges);
    if (!m_isManagersDrag)
        m_drag = WindowDrag{geometry(), pointer, edges};
}

void TransparentWindow::endManagersDrag()
{
    if (std::exchange(m_isManagersDrag, false))
        m_services.hints.endDrag(*windowHandle());
}

void TransparentWindow::continueDrag(QPoint pointer)
{
    if (m_drag)
        m_services.hints.place(*this, m_drag->frameFor(pointer, minimumSize()));
}

void TransparentWindow::endDrag()
{
    m_drag.reset();
}

bool TransparentWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
        if (m_view)
            m_view->capsule().set(&ControlCapsuleState::isHovering, event->type() == QEvent::Enter);
        break;
    case QEvent::Hide:
        m_hasAppeared = false;
        updateShown();
        break;
    case QEvent::WindowStateChange:
        m_hasAppeared &= !isMinimized();
        updateShown();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void TransparentWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        orderOut();
    else
        QWidget::keyPressEvent(event);
}

void TransparentWindow::mousePressEvent(QMouseEvent *event)
{
    const QStyleHints *hints = QGuiApplication::styleHints();
    if (event->button() == Qt::LeftButton)
        m_clicks.press(
            event->globalPosition(), pos(), std::chrono::milliseconds(event->timestamp()),
            {std::chrono::milliseconds(hints->mouseDoubleClickInterval()), double(hints->mouseDoubleClickDistance())});
}

void TransparentWindow::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event); // this event replaces the second press of a pair
}

void TransparentWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        dragBody(event->globalPosition());
}

void TransparentWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    dragBody(event->globalPosition()); // a quick drag may have had no move event
    endDrag();
    const auto click = m_clicks.release(event->globalPosition(), pos());
    if (click && m_view)
        m_view->onBodyClicked(*click);
}

void TransparentWindow::dragBody(QPointF pointer)
{
    if (const auto start = m_clicks.move(pointer))
        beginMove(start->toPoint(), pointer.toPoint());
    continueDrag(pointer.toPoint());
}

void TransparentWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    orderOut();
}

void TransparentWindow::moveEvent(QMoveEvent *)
{
    frameChanged();
}

void TransparentWindow::resizeEvent(QResizeEvent *)
{
    if (m_view)
        m_view->setGeometry(rect());
    for (ResizeHandle *handle : m_handles)
        handle->placeIn(size());
    updateMask();
    frameChanged();
}

void TransparentWindow::frameChanged()
{
    if (!m_isShown)
        return;
    m_userMoves.frameChanged();
    onFrameChanged();
}

bool TransparentWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle()) {
        // Only a mapped window is exposed. Before that, the window manager doesn't know it.
        if (event->type() == QEvent::Expose)
            updateShown();
    } else if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        for (WindowButton *button : m_buttons)
            button->setRevealed(event->type() == QEvent::Enter);
    }
    return QWidget::eventFilter(watched, event);
}

void TransparentWindow::updateShown()
{
    // When a window manager shows the desktop, windows disappear without an event. They are no longer exposed then.
    const bool shown = isVisible() && !isMinimized() && windowHandle()->isExposed();
    if (shown == m_isShown)
        return;
    m_isShown = shown;
    if (shown) {
        m_hasAppeared = true;
        m_userMoves.windowShown();
        updatePresence();
    } else {
        m_userMoves.windowHidden();
        endDrag();
        endManagersDrag();
    }
    onShown(shown);
}

bool TransparentWindow::isOnScreen() const
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return m_isShown && std::any_of(screens.begin(), screens.end(), [this](const QScreen *screen) {
               return screen->geometry().intersects(geometry());
           });
}

bool TransparentWindow::isInputMode() const
{
    return m_view && m_view->isInputMode();
}

GlassArea TransparentWindow::glassArea() const
{
    return {.glass = {mapToGlobal(QPointF(0, 0)), QSizeF(size())},
            .windowFrame = ScreenRect(geometry()),
            .windowNumber = quint32(winId())};
}

QList<QRectF> TransparentWindow::windowControlExclusionRects(double padding) const
{
    QRectF controls;
    for (const WindowButton *button : m_buttons) {
        if (!button->isHidden())
            controls |= button->geometry();
    }
    if (controls.isEmpty())
        return {};
    controls = controls.adjusted(-padding, -padding, padding, padding).intersected(rect());
    return controls.isEmpty() ? QList<QRectF>() : QList{controls};
}

void TransparentWindow::updateMask()
{
    if (!m_areCornersCut) {
        clearMask();
        return;
    }
    QPainterPath rounded;
    rounded.addRoundedRect(rect(), paneCornerRadius, paneCornerRadius);
    setMask(QRegion(rounded.toFillPolygon().toPolygon()));
}

} // namespace lucentra
