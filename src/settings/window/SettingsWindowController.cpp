#include "SettingsWindowController.h"

#include "LocalizationManager.h"
#include "SettingsView.h"
#include "UncoveredPlace.h"

#include <QEvent>
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
{
    setObjectName(u"settings"_s);
    setWindowIcon(m_services.applicationIcon);
    setContextMenuPolicy(Qt::NoContextMenu);
    m_services.fillMenuBar(*menuBar());
    refreshTitle();
}

SettingsWindowController::~SettingsWindowController()
{
    delete m_view; // while there are the services that it uses
}

void SettingsWindowController::refreshTitle()
{
    setWindowTitle(m_services.texts.localized(u"Lucentra｜澄鏡通 設定"_s));
}

void SettingsWindowController::showWindow()
{
    if (!m_view) {
        m_view = new SettingsView(m_services, m_keys);
        m_view->setCurrentIndex(m_tab);
        setCentralWidget(m_view);
    }
    if (!std::exchange(m_hasPlace, true))
        placeAtFirst();
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
}

void SettingsWindowController::showModels()
{
    m_view->showModels();
}

void SettingsWindowController::placeAtFirst()
{
    const QRect available = screen()->availableGeometry();
    const QSize size = formSize.expandedTo(m_view->minimumSizeHint()) + QSize(0, menuBar()->sizeHint().height());
    resize(size.boundedTo(available.size()));
    move(uncoveredPlace(this->size(), available, m_services.paneFrame()));
}

void SettingsWindowController::forgetView()
{
    if (!m_view)
        return;
    m_tab = m_view->currentIndex();
    m_view->deleteLater();
    m_view = nullptr;
    takeCentralWidget();
}

bool SettingsWindowController::event(QEvent *event)
{
    if (event->type() == QEvent::Close) {
        QMetaObject::invokeMethod(
            this, [this] { forgetView(); }, Qt::QueuedConnection);
    } else if (event->type() == QEvent::WindowActivate) {
        if (m_view)
            m_view->refresh();
        m_keys.retryFailed();
    }
    return QMainWindow::event(event);
}

} // namespace lucentra
