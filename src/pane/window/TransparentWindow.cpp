#include "TransparentWindow.h"

#include "GlassView.h"
#include "LocalizationManager.h"
#include "PaneShape.h"
#include "ResizeHandle.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "WindowButton.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainterPath>
#include <QScreen>
#include <QWindow>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Of the three buttons' squares: the first one's corner, and from one to the next. Points. They share their centre
/// line with the capsule.
constexpr QPoint firstButton{10, 12};
constexpr int buttonStep = 20;

QRect centredOnMainScreen(QSize size)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->geometry() : QRect(0, 0, 1440, 900);
    return {area.topLeft() + QPoint((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

} // namespace

TransparentWindow::TransparentWindow(const Services &services)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_services(services)
    , m_userMoves(services.scheduler,
                  {.isButtonDown = [this] { return m_services.hints.isPointerButtonDown(); },
                   .frame = [this] { return geometry(); },
                   // Some window managers drag the window without a word to it until the end.
                   .held = [this] { frameChanged(); },
                   .released = [this] { endManagersDrag(); }},
                  {.began = [this] { userHolds(true); },
                   .unchanged = [this] { userHolds(false); },
                   .moved =
                       [this](std::chrono::milliseconds ago) {
                           if (onUserMoved)
                               onUserMoved(ago);
                       }})
{
    setAttribute(Qt::WA_TranslucentBackground);
    setMinimumSize(smallestSize);
    setGeometry(centredOnMainScreen(initialSize));
    addButtons();
    addResizeHandles();
    retranslate();
    services.texts.observeLanguage(this, [this] { retranslate(); });
    create();
    windowHandle()->installEventFilter(this);
    services.hints.setHoldHandler(*windowHandle(), [this](bool isHeld) {
        // An open menu of ours has pointer and keyboard to itself.
        m_userMoves.held(isHeld && !QApplication::activePopupWidget());
    });
}

void TransparentWindow::userHolds(bool isHeld)
{
    if (onUserHold)
        onUserHold(isHeld);
}

void TransparentWindow::setContentView(GlassView *view)
{
    m_view = view;
    view->setParent(this);
    view->setGeometry(rect());
    view->lower();
    view->show();
    view->setFocus(); // not the first button: nobody has gone there
}

void TransparentWindow::makeKeyAndOrderFront()
{
    // A window manager has taken it off the screen: only a new window comes back for certain. One that is just about to
    // appear must stay, since window managers forget the hints of a window that goes and comes at once.
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
    connect(m_buttons[1], &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(m_buttons[2], &QAbstractButton::clicked, this, &TransparentWindow::zoom);
}

void TransparentWindow::addResizeHandles()
{
    const ResizeHandle::Callbacks callbacks{
        .pressed = [this](Qt::Edges edges, QPoint pointer) { beginResize(edges, pointer); },
        .moved = [this](QPoint pointer) { continueDrag(pointer); },
        .released = [this] { endDrag(); },
    };
    // Corners last: they lie above the edges.
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
    m_userMoves.requested();
    setWindowState(windowState() ^ Qt::WindowMaximized);
}

void TransparentWindow::beginMove(QPoint pressed, QPoint pointer)
{
    m_userMoves.grabbed();
    const QRect start = geometry();
    // A button that is up by now, in a quick flick, is one that a window manager would wait for in vain.
    if (m_services.hints.isPointerButtonDown()) {
        move(start.topLeft() + pointer - pressed); // a window manager begins where the pointer is
        m_isManagersDrag = windowHandle()->startSystemMove();
    }
    if (!m_isManagersDrag)
        m_drag = WindowDrag{start, pressed, {}};
}

void TransparentWindow::beginResize(Qt::Edges edges, QPoint pointer)
{
    m_userMoves.grabbed();
    m_isManagersDrag = m_services.hints.isPointerButtonDown() && windowHandle()->startSystemResize(edges);
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
        setGeometry(m_drag->frameFor(pointer, minimumSize()));
}

void TransparentWindow::endDrag()
{
    m_drag.reset();
}

void TransparentWindow::setCornersCut(bool cut)
{
    m_areCornersCut = cut;
    updateMask();
}

bool TransparentWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
        if (m_view)
            m_view->setHovering(event->type() == QEvent::Enter);
        break;
    case QEvent::Hide:
        m_hasAppeared = false;
        updateShown();
        break;
    case QEvent::WindowStateChange:
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
        handle->setGeometry(ResizeHandle::placeFor(handle->edges(), size()));
    updateMask();
    frameChanged();
}

void TransparentWindow::frameChanged()
{
    if (!m_isShown)
        return;
    m_userMoves.frameChanged();
    if (onFrameChanged)
        onFrameChanged();
}

bool TransparentWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle()) {
        // Only a mapped window is exposed; before that a window manager doesn't know it.
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
    // Window managers also take a window off the screen without a word, to show the desktop: then it isn't exposed.
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
    if (onShown)
        onShown(shown);
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
