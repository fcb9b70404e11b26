#include "SettingsWindowController.h"

#include "LocalizationManager.h"
#include "SettingsView.h"
#include "UncoveredPlace.h"

#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The size of the form unless a language needs more.
constexpr QSize formSize(520, 440);

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
