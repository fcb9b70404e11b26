#include "HistoryWindowController.h"

#include "HistoryView.h"
#include "LocalizationManager.h"
#include "SettingsStore.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr QSize initialSize(450, 600); ///< without the menu bar

/// The window's geometry as saved by the toolkit, in base 64.
constexpr Setting<QString> frameSetting{"HistoryWindow"_L1, u""};

} // namespace

HistoryWindowController::HistoryWindowController(const Services &services)
    : m_services(services)
    , m_view(new HistoryView(services.history, services.texts, services.scheduler))
{
    setCentralWidget(m_view);
    connect(m_view, &HistoryView::closeRequested, this, &QWidget::close);
    refreshTexts();
}

HistoryWindowController::~HistoryWindowController()
{
    if (isVisible())
        saveFrame();
}

void HistoryWindowController::restoreFrame()
{
    const QByteArray frame = QByteArray::fromBase64(m_services.settings.read(frameSetting).toLatin1());
    if (restoreGeometry(frame))
        return;
    const QRect available = screen()->availableGeometry();
    const QSize titleBar(0, style()->pixelMetric(QStyle::PM_TitleBarHeight)); // about what the desktop's takes
    const QSize size = initialSize + QSize(0, menuBar()->sizeHint().height());
    resize(size.boundedTo(available.size() - titleBar));
    move(available.center() - rect().center());
}

void HistoryWindowController::saveFrame()
{
    m_services.settings.write(frameSetting, QString::fromLatin1(saveGeometry().toBase64()));
}

void HistoryWindowController::showWindow()
{
    if (!std::exchange(m_hasFrame, true))
        restoreFrame(); // after the menus were added
    if (!isVisible())
        m_view->setFocus();
    if (isMinimized())
        showNormal();
    else
        show();
    raise();
    activateWindow();
    m_services.activate(*windowHandle());
}

void HistoryWindowController::showEntry(const QUuid &id)
{
    m_view->showEntry(id);
}

void HistoryWindowController::refreshTexts()
{
    setWindowTitle(m_services.texts.localized(u"翻譯歷史紀錄"_s));
    m_view->retranslate();
}

void HistoryWindowController::closeEvent(QCloseEvent *event)
{
    m_view->windowClosed();
    QMainWindow::closeEvent(event);
}

void HistoryWindowController::hideEvent(QHideEvent *event)
{
    saveFrame();
    QMainWindow::hideEvent(event);
}

} // namespace lucentra
