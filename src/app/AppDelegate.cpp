#include "AppDelegate.h"

#include "Settings.h"
#include "TextRecognition.h"
#include "TextRecognizer.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How long after the first picture the recognizer's models are loaded, so that they don't hold it up.
constexpr auto warmUpDelay = 300ms;

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

AppDelegate::AppDelegate(DiagnosticLine diagnostics)
    : m_services(diagnostics, {.copy = copyToClipboard,
                               .record = [this](const QString &original,
                                                const QString &translation) { m_history.add(original, translation); }})
    , m_history(HistoryManager::userFilePath(), m_services.mainQueue(), diagnostics)
    , m_desktop(m_scheduler)
    , m_hotkeys(
          m_services.settings(), m_desktop.hotkeys, m_services.mainQueue(), [this] { return isPaneKeyWindow(); },
          diagnostics)
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    m_services.texts().syncTargetLanguage();
    createGlassWindow();
    wirePass();
    wireBackdrop();
    buildContextMenu();
    m_window->makeKeyAndOrderFront();
    m_services.settings().write(settings::isAlwaysOnTop, true);
    m_services.notifications().observe(notifications::appLanguageDidChange, this,
                                       [this](const QVariant &) { retitle(); });
    wireHotkeys();
    m_services.warmUpRecognizer(m_scheduler, warmUpDelay);
}

void AppDelegate::applicationWillTerminate()
{
    m_hotkeys.unregisterHotkeys();
    m_backdrop->stop();
    m_pass.reset();
    m_services.translationManager().cancelAll();
    m_services.mainQueue().drain();
    m_history.finish();
}

void AppDelegate::createGlassWindow()
{
    m_window = std::make_unique<TransparentWindow>(
        TransparentWindow::Services{.hints = m_desktop.windowHints,
                                    .settings = m_services.settings(),
                                    .texts = m_services.texts(),
                                    .notificationCenter = m_services.notifications(),
                                    .scheduler = m_scheduler});
    m_glassView = new GlassView({.settings = m_services.settings(),
                                 .texts = m_services.texts(),
                                 .notificationCenter = m_services.notifications(),
                                 .scheduler = m_scheduler},
                                m_desktop.displayOptions.options());
    m_glassView->setComposited(m_desktop.compositing.isComposited());
    m_desktop.compositing.setChangeHandler([this](bool composited) { m_glassView->setComposited(composited); });
    m_desktop.displayOptions.setChangeHandler([this](const AccessibilityDisplayOptions &options) {
        m_glassView->accessibilityDisplayOptionsChanged(options);
    });
    m_window->setContentView(m_glassView);
    m_services.onDevice().bridge.setParentView(m_glassView);
}

void AppDelegate::wirePass()
{
    // Made here, on the main thread; the pass's workers use them.
    TextRecognizer &recognizer = m_services.recognizer();
    TranslationManager &manager = m_services.translationManager();
    PassSteps steps{
        .capture = m_desktop.capture,
        .access = m_desktop.access,
        .recognize = [&recognizer](const QImage &image) { return recognizeBlocks(recognizer, image); },
        .translateBlocks =
            [&manager](const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion) {
                manager.translateBlocks(blocks, std::move(completion));
            },
        .copy = copyToClipboard,
        .record = [this](const QString &original, const QString &translation) { m_history.add(original, translation); },
        .openScreenRecordingSettings = [] {}, // no X server withholds its screen, so there is nothing to open
    };
    m_pass = std::make_unique<TranslationPass>(*m_glassView, std::move(steps), m_services.settings(),
                                               m_services.texts(), m_services.mainQueue(), m_scheduler);
    m_glassView->onTranslateTapped = [this] { m_pass->startCapturePass(); };
    m_window->onUserMoved = [this] { m_pass->scheduleDebouncedCapture(); };
}

void AppDelegate::wireBackdrop()
{
    m_backdrop = std::make_unique<BackdropRenewal>(
        BackdropRenewal::Pane{
            .area = [this] { return m_glassView->glassArea(); },
            .screenRect = [this] { return QRectF(m_window->geometry()); },
            .showBeneath = [this](const QImage &content) { m_glassView->setBackdropContent(content); }},
        m_desktop.capture, m_desktop.changes, m_services.texts(), m_services.mainQueue(), m_scheduler);
    m_window->onShown = [this](bool shown) {
        m_desktop.capture.setPaneShown(shown);
        if (shown)
            m_backdrop->start();
        else
            m_backdrop->stop();
    };
    m_window->onFrameChanged = [this] { m_backdrop->paneMoved(); };
}

void AppDelegate::buildContextMenu()
{
    m_translateAction = new QAction(this);
    m_translateAction->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Return));
    connect(m_translateAction, &QAction::triggered, this, [this] { m_pass->translateCurrentArea(); });
    m_toggleAction = new QAction(this);
    connect(m_toggleAction, &QAction::triggered, this, &AppDelegate::toggleWindow);
    m_quitAction = new QAction(this);
    m_quitAction->setShortcut(QKeySequence::Quit);
    connect(m_quitAction, &QAction::triggered, qApp, &QCoreApplication::quit);
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    m_glassView->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_glassView->addActions({m_translateAction, m_toggleAction, separator, m_quitAction});
    retitle();
}

void AppDelegate::wireHotkeys()
{
    m_hotkeys.onToggleWindow = [this] { toggleWindow(); };
    m_hotkeys.onHideWindow = [this] { m_window->orderOut(); };
    m_hotkeys.onTranslateCurrentArea = [this] {
        if (m_pass) // a press may still wait while the program ends
            m_pass->translateCurrentArea();
    };
    m_services.notifications().observe(notifications::updateGlobalHotkey, this,
                                       [this](const QVariant &) { m_hotkeys.registerHotkeys(); });
    m_hotkeys.registerHotkeys();
}

bool AppDelegate::isPaneKeyWindow() const
{
    // Keys go to an open menu first.
    return QGuiApplication::focusWindow() == m_window->windowHandle() && !QApplication::activePopupWidget();
}

void AppDelegate::retitle()
{
    const LocalizationManager &texts = m_services.texts();
    m_translateAction->setText(texts.localized(u"翻譯目前區域"_s));
    m_toggleAction->setText(texts.localized(u"顯示/隱藏 翻譯板"_s));
    m_quitAction->setText(texts.localized(u"結束 Lucentra｜澄鏡通"_s));
}

void AppDelegate::toggleWindow()
{
    if (m_window->isShown())
        m_window->orderOut();
    else
        m_window->makeKeyAndOrderFront();
}

} // namespace lucentra
