#include "PaneShell.h"

#include "ControlCapsuleView.h"
#include "Desktop.h"
#include "HistoryManager.h"
#include "Memory.h"
#include "PaneWindowHints.h"
#include "ScreenStream.h"
#include "Services.h"
#include "SessionBus.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TextRecognition.h"
#include "TextRecognizer.h"
#include "TranslationEngine.h"

#include <QApplication>
#include <QClipboard>
#include <QWindow>

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How long after the start of a pass the memory of its workers is released.
constexpr auto memoryDelay = 5s;
/// The time between two pictures of the glass while translations follow.
constexpr auto glassInterval = 200ms;
/// The smallest change beneath that is seen through the glass, in pixels: more than a caret, less than a letter.
constexpr int leastSeen = 128;

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

PaneShell::PaneShell(Scheduler &scheduler, Services &services, Desktop &desktop, SessionBus &bus,
                     HistoryManager &history)
    : m_scheduler(scheduler)
    , m_services(services)
    , m_desktop(desktop)
    , m_history(history)
    , m_displayOptions(bus.connection())
    , m_manualInput(scheduler, services.mainQueue(), copyToClipboard)
    , m_window({.hints = desktop.windows(),
                .settings = services.settings(),
                .texts = services.texts(),
                .scheduler = scheduler})
    , m_view(new GlassView({.settings = services.settings(), .texts = services.texts(), .scheduler = scheduler},
                           m_displayOptions.options()))
    , m_controls(*m_view, services.settings(), services.texts())
    , m_autoHide(
          scheduler,
          {.isPaneActive = [this] { return isActive(); },
           .hasInputFocus = [this] { return m_desktop.windows().hasInputFocus(*m_window.windowHandle()); },
           .isPointerInUse =
               [this] { return QApplication::activePopupWidget() || m_desktop.windows().isPointerButtonDown(); }},
          [this] {
              if (m_services.settings().read(settings::autoHide))
                  m_window.orderOut();
          })
{
    wireDesktop();
    m_window.setContentView(m_view);
    wirePass();
    wireManualInput();
    wireLive();
    wireBackdrop();
    connect(&bus, &SessionBus::returned, this, [this, &bus] { m_displayOptions.setBus(bus.connection()); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        m_autoHide.focusChanged();
        keepAbovePane(focus);
    });
}

/// Only for engines that translate each line by itself; language models see the lines of a request together.
bool PaneShell::recommendsParagraphs(const QList<TextLine> &lines, const QSizeF &imageSize) const
{
    SettingsStore &settings = m_services.settings();
    const auto engine = translationEngine(settings.read(settings::translationEngine));
    const bool isAlone = engine == TranslationEngine::apple || engine == TranslationEngine::free ||
                         engine == TranslationEngine::microsoft || engine == TranslationEngine::deepl;
    if (!isAlone || settings.read(settings::translationUnit) != TextUnit::Line ||
        settings.read(settings::areParagraphsRecommended) || !hasRunningText(lines, imageSize))
        return false;
    settings.write(settings::areParagraphsRecommended, true);
    return true;
}

PaneShell::~PaneShell()
{
    m_live.reset();
    m_pass.reset(); // waits for its workers, which use the rest
    onShown = nullptr;
}

void PaneShell::explain(FirstTips::Circumstances circumstances)
{
    m_tips = std::make_unique<FirstTips>(*m_view, m_services.settings(), m_services.texts(), std::move(circumstances));
}

void PaneShell::wireDesktop()
{
    m_view->setComposited(m_desktop.isComposited());
    m_desktop.setCompositedHandler([this](bool composited) { m_view->setComposited(composited); });
    m_displayOptions.onChanged = [this](const AccessibilityDisplayOptions &options) {
        m_view->accessibilityDisplayOptionsChanged(options);
        if (m_manualInputView)
            m_manualInputView->setReduceMotion(options.reduceMotion);
    };
}

void PaneShell::prepareEngines()
{
    if (std::exchange(m_areEnginesPrepared, true))
        return;
    m_services.recognizer();
    m_services.translationManager();
    prepareOnDevice();
    m_services.settings().observe(settings::translationEngine, this, [this] { prepareOnDevice(); });
    if (m_live && m_live->isOn())
        m_services.recognizer().warmUp(); // the first look will follow
}

/// With another engine, nobody asks for the phrases of this computer, which take seconds to collect.
void PaneShell::prepareOnDevice()
{
    m_services.prepareOnDevice(*m_view, m_services.settings().read(settings::translationEngine) ==
                                            qint64(TranslationEngine::apple));
}

void PaneShell::wirePass()
{
    PassSteps steps{
        .capture = m_desktop.capture(),
        .recognize =
            [this](const QImage &image, const QRect &part, ReadingEffort effort,
                   const std::function<bool()> &isWanted) {
                m_services.mainQueue().post([this] { giveBackMemoryLater(); });
                return recognizeLines(m_services.recognizer(), image, part, isWanted, effort);
            },
        .translate =
            [this](const QList<TextBlock> &blocks, const std::function<bool()> &isWanted) {
                return m_services.translationManager().translate(blocks, isWanted);
            },
        .isPhrase = [this](const QString &text) { return m_services.translationManager().isPhrase(text); },
        .known = [this](const QString &text) { return m_services.translationManager().known(text); },
        .copy = copyToClipboard,
        .record = [this](const QString &original, const QString &translation) { m_history.add(original, translation); },
        .openScreenRecordingSettings = [] {}, // a desktop that protects the screen asks by itself
        .recommendsParagraphs = [this](const QList<TextLine> &lines,
                                       const QSizeF &size) { return recommendsParagraphs(lines, size); },
    };
    m_pass = std::make_unique<TranslationPass>(m_window, *m_view, std::move(steps), m_services.settings(),
                                               m_services.texts(), m_services.mainQueue(), m_scheduler);
    m_controls.onTranslateTapped = [this] {
        prepareEngines();
        m_services.recognizer().warmUp(); // while the picture is taken
        m_pass->startCapturePass();
    };
    m_window.onUserHold = [this](bool isHeld) {
        prepareEngines();
        if (isHeld)
            m_services.recognizer().warmUp(); // a pass will probably follow
        m_pass->userHolds(isHeld);
        if (m_live)
            m_live->userHolds(isHeld);
    };
    m_window.onUserMoved = [this](std::chrono::milliseconds ago) {
        m_pass->scheduleDebouncedCapture(ago);
        if (m_tips)
            m_tips->done(FirstTip::Drag);
        if (m_live)
            m_live->userHolds(false);
    };
}

bool PaneShell::canBeLive() const
{
    return m_desktop.stream().isContinuous();
}

void PaneShell::wireLive()
{
    if (!canBeLive())
        return;
    m_live = std::make_unique<LiveTranslation>(
        LiveTranslation::Services{.settings = m_services.settings(),
                                  .scheduler = m_scheduler,
                                  .power = m_power,
                                  .now =
                                      [] {
                                          return std::chrono::duration_cast<std::chrono::milliseconds>(
                                              std::chrono::steady_clock::now().time_since_epoch());
                                      }},
        *m_pass, m_window);
    ControlCapsuleView &capsule = m_view->capsule();
    m_live->onTrouble = [&capsule](const QString &trouble) { capsule.set(&ControlCapsuleState::liveTrouble, trouble); };
    m_live->onSwitched = [this, &capsule](bool isOn) {
        capsule.set(&ControlCapsuleState::isLive, isOn);
        capsule.set(&ControlCapsuleState::liveTrouble, {});
        m_view->hints().showHint(m_services.texts().localized(isOn ? u"即時翻譯：開"_s : u"即時翻譯：關"_s), true);
        if (isOn)
            m_services.recognizer().warmUp();
        followBeneath();
    };
    capsule.set(&ControlCapsuleState::isLive, m_live->isOn());
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
    m_manualInput.onTranslate = [this](const QString &text, const ManualInputViewModel::Completion &completion) {
        m_services.translationManager().translateText(text, completion);
    };
    connect(&m_manualInput, &ManualInputViewModel::changed, this, [this, shown = QString()]() mutable {
        const QString &note = m_manualInput.note();
        const bool isNew = std::exchange(shown, note) != note;
        if (isNew && !note.isEmpty() && m_manualInputView && !m_manualInputView->hasHeaders())
            m_view->hints().showNote(note);
    });
    m_controls.manualInput = {
        .makePanel = [this](QWidget *parent) -> QWidget * {
            m_manualInputView =
                new ManualInputView(m_manualInput, m_services.texts(), m_displayOptions.options().reduceMotion, parent);
            return m_manualInputView;
        },
        .submit = [this] { m_manualInput.translateNow(); },
        .copy =
            [this] {
                m_manualInput.copyResult();
                if (m_manualInput.isCopied() && m_manualInputView && !m_manualInputView->hasHeaders())
                    m_view->hints().showHint(m_services.texts().localized(u"已複製"_s), true);
            },
        .reset =
            [this] { // the input mode begins or ends
                m_manualInput.reset();
                m_pass->supersede();
                followBeneath();
            },
    };
}

void PaneShell::wireBackdrop()
{
    m_window.onShown = [this](bool shown) {
        followBeneath();
        if (shown)
            m_desktop.windows().activate(*m_window.windowHandle());
        onShown(shown);
    };
    m_window.onFrameChanged = [this] { followBeneath(); };
}

void PaneShell::followBeneath()
{
    // The glass reaches to the pane's edge, also over a display's edge, while a capture for reading leaves the border
    // out and must be whole.
    if (m_live) {
        m_desktop.stream().setInterval(m_live->isOn() ? LiveTranslation::interval : ScreenStream::interval);
        m_live->startAgain();
    }
    m_unseenBeneath = {};
    m_desktop.stream().follow(m_window.isShown() ? m_window.glassArea().glass : ScreenRect(),
                              [this](const ScreenFrame &frame) { showBeneath(frame); });
}

void PaneShell::showBeneath(const ScreenFrame &frame)
{
    if (m_live && m_live->isOn())
        prepareEngines();
    if (m_live)
        m_live->add(frame);
    m_unseenBeneath |= frame.damage;
    const bool isSeen = frame.picture.isNull() || !m_desktop.isComposited() ||
                        m_unseenBeneath.width() * m_unseenBeneath.height() > leastSeen;
    // The glass may follow more slowly than the translations.
    if (m_nextBackdrop) {
        m_waitingBackdrop = frame.picture;
        return;
    }
    if (!isSeen)
        return;
    m_unseenBeneath = {};
    m_view->setBackdropContent(frame.picture);
    if (m_live && m_live->isOn())
        m_nextBackdrop = m_scheduler.after(glassInterval, [this] {
            m_nextBackdrop.reset();
            m_unseenBeneath = {};
            if (const QImage waiting = std::exchange(m_waitingBackdrop, {}); !waiting.isNull())
                m_view->setBackdropContent(waiting);
        });
}

void PaneShell::keepAbovePane(const QWindow *used)
{
    // The pane is above all windows and may cover the whole screen; the window that the user works with must not be
    // beneath it.
    const auto setAbove = [&](bool isAbove) {
        for (const QWindow *window : QGuiApplication::topLevelWindows()) {
            const bool isMember = window->type() == Qt::Window || window->type() == Qt::Dialog;
            const bool isUsed = used && (window == used || window == used->transientParent());
            if (isMember && isUsed == isAbove && window->isExposed() && window != m_window.windowHandle())
                m_desktop.windows().setAbove(*window, isAbove);
        }
    };
    setAbove(false);
    setAbove(true); // last: in a Wayland session this may lower the pane instead
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
        m_desktop.windows().activate(*m_window.windowHandle());
}

void PaneShell::toggle()
{
    if (m_window.isShown() || m_window.isAppearing())
        hide();
    else
        show();
}

void PaneShell::translateCurrentArea()
{
    if (m_window.isShown())
        m_controls.performTranslateAction();
    else
        m_window.makeKeyAndOrderFront();
}

void PaneShell::stop()
{
    qGuiApp->disconnect(this); // the focus moves once more when the program's windows close
    m_desktop.stream().follow({}, {});
    hide();
}

} // namespace lucentra
