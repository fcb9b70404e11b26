#include "PaneShell.h"

#include "HistoryManager.h"
#include "Memory.h"
#include "Services.h"
#include "Settings.h"
#include "TextRecognition.h"
#include "TextRecognizer.h"
#include "X11Desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QWindow>

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How long after the start of a pass the memory of its workers is given back.
constexpr auto memoryDelay = 5s;

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

PaneShell::PaneShell(Scheduler &scheduler, Services &services, X11Desktop &desktop, HistoryManager &history)
    : m_scheduler(scheduler)
    , m_services(services)
    , m_desktop(desktop)
    , m_history(history)
    , m_manualInput(scheduler, services.mainQueue(), copyToClipboard)
    , m_window({.hints = desktop.windowHints,
                .settings = services.settings(),
                .texts = services.texts(),
                .scheduler = scheduler})
    , m_view(new GlassView({.settings = services.settings(), .texts = services.texts(), .scheduler = scheduler},
                           desktop.displayOptions.options()))
    , m_backdrop({.area = [this] { return m_window.glassArea(); },
                  .display = [this] { return m_window.displayArea(); },
                  .showBeneath = [this](const QImage &content) { m_view->setBackdropContent(content); }},
                 desktop.capture, desktop.changes, services.texts(), m_captureWorker, services.mainQueue(), scheduler)
    , m_autoHide(
          scheduler,
          {.isPaneActive = [this] { return isActive(); },
           .hasInputFocus = [this] { return m_desktop.windowHints.hasInputFocus(*m_window.windowHandle()); },
           .isPointerInUse =
               [this] { return QApplication::activePopupWidget() || m_desktop.windowHints.isPointerButtonDown(); }},
          [this] {
              if (m_services.settings().read(settings::autoHide))
                  m_window.orderOut();
          })
{
    wireDesktop();
    m_window.setContentView(m_view);
    services.onDevice().bridge.setParentView(m_view);
    wirePass();
    wireManualInput();
    wireBackdrop();
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        m_autoHide.focusChanged();
        keepAbovePane(focus);
    });
}

PaneShell::~PaneShell()
{
    m_pass.reset(); // waits for its workers, which use the rest
    onShown = nullptr;
}

void PaneShell::wireDesktop()
{
    if (isWaylandSession())
        m_desktop.capture.explainNothingBeneath([&texts = m_services.texts()] {
            return texts.localized(
                u"在 Wayland 工作階段中，Lucentra 只看得到 X11 程式的視窗，而翻譯板下方沒有這樣的視窗。請讓那個程式透過 XWayland 執行，或改用 X11 工作階段登入。"_s);
        });
    m_desktop.capture.explainMissing([&texts = m_services.texts()](const QString &names) {
        return texts.formatted(u"這個 X 伺服器缺少擷取畫面所需的功能：%@"_s, names);
    });
    m_view->setComposited(m_desktop.compositing.isComposited());
    m_desktop.compositing.setChangeHandler([this](bool composited) { m_view->setComposited(composited); });
    m_desktop.displayOptions.setChangeHandler([this](const AccessibilityDisplayOptions &options) {
        m_view->accessibilityDisplayOptionsChanged(options);
        if (m_manualInputView)
            m_manualInputView->setReduceMotion(options.reduceMotion);
    });
}

void PaneShell::wirePass()
{
    // Made here, on the main thread; the pass's workers use them.
    TextRecognizer &recognizer = m_services.recognizer();
    TranslationManager &manager = m_services.translationManager();
    PassSteps steps{
        .capture = m_desktop.capture,
        .recognize =
            [this, &recognizer](const QImage &image, std::function<bool()> isWanted) {
                m_services.mainQueue().post([this] { giveBackMemoryLater(); });
                return recognizeBlocks(recognizer, image, std::move(isWanted));
            },
        .translateBlocks =
            [&manager](const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion,
                       std::function<bool()> isWanted) {
                manager.translateBlocks(blocks, std::move(completion), std::move(isWanted));
            },
        .copy = copyToClipboard,
        .record = [this](const QString &original, const QString &translation) { m_history.add(original, translation); },
        .openScreenRecordingSettings = [] {}, // no X server withholds its screen, so there is nothing to open
    };
    m_pass = std::make_unique<TranslationPass>(m_window, *m_view, std::move(steps), m_services.settings(),
                                               m_services.texts(), m_services.mainQueue(), m_scheduler);
    m_view->onTranslateTapped = [this] { m_pass->startCapturePass(); };
    m_window.onUserHold = [this](bool isHeld) { m_pass->userHolds(isHeld); };
    m_window.onUserMoved = [this](std::chrono::milliseconds ago) { m_pass->scheduleDebouncedCapture(ago); };
}

void PaneShell::giveBackMemoryLater()
{
    // Not after every pass: one that follows at once needs the same memory again.
    if (!m_memoryTask)
        m_memoryTask = m_scheduler.after(memoryDelay, [this] {
            QThreadPool::globalInstance()->start(giveBackFreeMemory);
            m_memoryTask.reset();
        });
}

void PaneShell::wireManualInput()
{
    m_manualInput.onTranslate = [&manager = m_services.translationManager()](
                                    const QString &text, const ManualInputViewModel::Completion &completion) {
        manager.translateText(text, completion);
    };
    connect(&m_manualInput, &ManualInputViewModel::changed, this, [this, shown = QString()]() mutable {
        const QString &note = m_manualInput.note();
        const bool isNew = std::exchange(shown, note) != note;
        if (isNew && !note.isEmpty() && m_manualInputView && !m_manualInputView->hasHeaders())
            m_view->showNote(note);
    });
    m_view->manualInput = {
        .makePanel = [this](QWidget *parent) -> QWidget * {
            m_manualInputView = new ManualInputView(m_manualInput, m_services.texts(),
                                                    m_desktop.displayOptions.options().reduceMotion, parent);
            return m_manualInputView;
        },
        .submit = [this] { m_manualInput.translateNow(); },
        .copy =
            [this] {
                m_manualInput.copyResult();
                if (m_manualInput.isCopied() && m_manualInputView && !m_manualInputView->hasHeaders())
                    m_view->showHint(m_services.texts().localized(u"已複製"_s), true);
            },
        .reset =
            [this] { // the input mode begins or ends
                m_manualInput.reset();
                m_pass->supersede();
            },
    };
}

void PaneShell::wireBackdrop()
{
    m_window.onShown = [this](bool shown) {
        m_desktop.capture.setPaneShown(shown);
        if (shown) {
            m_backdrop.start();
            m_desktop.windowHints.activate(*m_window.windowHandle());
        } else {
            m_backdrop.stop();
        }
        if (onShown)
            onShown(shown);
    };
    m_window.onFrameChanged = [this] { m_backdrop.paneMoved(); };
}

void PaneShell::keepAbovePane(const QWindow *used)
{
    // The pane is above all windows, and may cover the whole screen: what the user works with must not lie beneath it.
    for (const QWindow *window : QGuiApplication::topLevelWindows()) {
        const bool isMember = window->type() == Qt::Window || window->type() == Qt::Dialog;
        if (isMember && window->isExposed() && window != m_window.windowHandle())
            m_desktop.windowHints.setAbove(*window, used && (window == used || window == used->transientParent()));
    }
}

bool PaneShell::isActive() const
{
    return QGuiApplication::focusWindow() == m_window.windowHandle();
}

bool PaneShell::isKeyWindow() const
{
    const bool isComposing = m_manualInputView && m_manualInputView->takesEscape();
    return isActive() && !QApplication::activePopupWidget() && !isComposing;
}

void PaneShell::show()
{
    m_window.makeKeyAndOrderFront();
    if (m_window.isShown())
        m_desktop.windowHints.activate(*m_window.windowHandle());
}

void PaneShell::toggle()
{
    if (m_window.isShown())
        hide();
    else
        show();
}

void PaneShell::translateCurrentArea()
{
    if (m_window.isShown())
        m_view->performTranslateAction();
    else
        m_window.makeKeyAndOrderFront();
}

void PaneShell::stop()
{
    qGuiApp->disconnect(this); // the focus moves once more when the program's windows close
    m_backdrop.stop();
    hide();
}

} // namespace lucentra
