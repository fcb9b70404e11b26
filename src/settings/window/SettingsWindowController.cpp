#include "SettingsWindowController.h"

#include "LocalizationManager.h"
#include "SettingsView.h"

#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The size of the form unless a language needs more.
constexpr QSize formSize(520, 440);

/// The middle of the screen, or a place beside the pane if the pane covers less of the window there.
QPoint uncoveredPlace(const QSize &size, const QRect &screen, const QRect &pane)
{
    constexpr int gap = 16;
    constexpr int titleBar = 36; // added by the window manager
    QRect middle(QPoint(), size);
    middle.moveCenter(screen.center());
    const auto within = [&](int x, int y) {
        return QRect(
            QPoint(std::clamp(x, screen.left(), std::max(screen.left(), screen.right() - size.width())),
                   std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() - size.height() - titleBar))),
            size);
    };
    const std::array places{
        middle, within(pane.right() + gap, middle.y()), within(pane.left() - gap - size.width(), middle.y()),
        within(middle.x(), pane.bottom() + gap), within(middle.x(), pane.top() - gap - titleBar - size.height())};
    const auto covered = [&](const QRect &place) {
        const QSize common = place.intersected(pane).size();
        return qint64(common.width()) * common.height();
    };
    return std::min_element(places.begin(), places.end(),
                            [&](const QRect &one, const QRect &other) { return covered(one) < covered(other); })
        ->topLeft();
}

} // namespace

SettingsWindowController::SettingsWindowController(SettingsServices services)
    : m_services(std::move(services))
    , m_keys(m_services.settings, m_services.keychain, m_services.mainQueue)
    , m_window(std::make_unique<QMainWindow>())
{
    m_window->setObjectName(u"settings"_s);
    m_window->setWindowIcon(m_services.applicationIcon);
    m_window->setContextMenuPolicy(Qt::NoContextMenu);
    m_window->installEventFilter(this);
    m_services.fillMenuBar(*m_window->menuBar());
    refreshTitle();
}

SettingsWindowController::~SettingsWindowController()
{
    m_window->removeEventFilter(this);
}

void SettingsWindowController::refreshTitle()
{
    m_window->setWindowTitle(m_services.texts.localized(u"Lucentra｜澄鏡通 設定"_s));
}

void SettingsWindowController::showWindow()
{
    if (!m_view)
        makeView();
    if (!m_hasPlace)
        placeAtFirst();
    if (m_window->isMinimized())
        m_window->showNormal();
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void SettingsWindowController::showModels()
{
    m_view->showModels();
}

void SettingsWindowController::makeView()
{
    m_view = new SettingsView(m_services, m_keys);
    m_view->setCurrentIndex(m_tab);
    m_window->setCentralWidget(m_view);
}

void SettingsWindowController::placeAtFirst()
{
    m_hasPlace = true;
    const QRect screen = m_window->screen()->availableGeometry();
    const QSize size =
        formSize.expandedTo(m_view->minimumSizeHint()) + QSize(0, m_window->menuBar()->sizeHint().height());
    m_window->resize(size.boundedTo(screen.size()));
    m_window->move(uncoveredPlace(m_window->size(), screen, m_services.paneFrame()));
}

void SettingsWindowController::forgetView()
{
    if (!m_view)
        return;
    m_tab = m_view->currentIndex();
    m_view->deleteLater();
    m_view = nullptr;
    m_window->takeCentralWidget();
}

bool SettingsWindowController::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Close:
        QMetaObject::invokeMethod(
            this, [this] { forgetView(); }, Qt::QueuedConnection);
        break;
    case QEvent::WindowActivate:
        if (m_view)
            m_view->refresh();
        m_keys.retryFailed();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace lucentra
