#include "TranslationPass.h"

#include "LocalizationManager.h"
#include "MainQueue.h"
#include "OverlayPlacement.h"
#include "PassTimings.h"
#include "ScreenCapture.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "WindowButtonMask.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Far more than superseded passes can wait for a service at once: each ends after 45 seconds at the latest.
constexpr int mostPasses = 512;

QString joinedTexts(const QList<TextBlock> &blocks)
{
    QStringList texts;
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts.join(u'\n');
}

} // namespace

/// What a pass is asked for.
struct TranslationPass::Request
{
    qint64 generation = 0;
    GlassArea area;
    QList<QRectF> exclusionRects;
};

/// What a pass found and its translations.
struct TranslationPass::Reading
{
    QList<TextBlock> blocks;
    QStringList translations;
    QStringList notes;
    PassTimings timings;
};

/// What the pane shows if there is none.
struct TranslationPass::ErrorCard
{
    enum class Button {
        Retry,
        AskForAccess, ///< a new pass that may ask for the permission
        OpenSettings, ///< of the system
    };

    QString title;
    QString message;
    Button button = Button::Retry;
};

TranslationPass::TranslationPass(const PassSource &source, PassView &view, PassSteps steps,
                                 const SettingsStore &settings, const LocalizationManager &texts, MainQueue &mainQueue,
                                 Scheduler &scheduler)
    : m_source(source)
    , m_view(view)
    , m_steps(std::move(steps))
    , m_settings(settings)
    , m_texts(texts)
    , m_mainQueue(mainQueue)
    , m_scheduler(scheduler)
    , m_self(std::make_shared<TranslationPass *>(this))
{
    m_workers.setMaxThreadCount(mostPasses);
}

TranslationPass::~TranslationPass()
{
    m_captureGeneration = -1; // no pass is current any more, so that the workers end soon
}

bool TranslationPass::startsByItself() const
{
    // In the input mode the pane shows typed text, which the screen's must not cover.
    return m_settings.read(settings::triggerMode) == TriggerMode::AfterMoving && !m_source.isInputMode();
}

void TranslationPass::scheduleDebouncedCapture(std::chrono::milliseconds sinceRelease)
{
    m_isDueAfterHold = false;
    if (!startsByItself())
        return;
    m_debounceTimer = m_scheduler.after(debounceDelay - sinceRelease, [this] {
        m_debounceTimer.reset();
        if (startsByItself())
            startCapturePass();
    });
}

void TranslationPass::userHolds(bool isHeld)
{
    if (!isHeld && m_isDueAfterHold)
        scheduleDebouncedCapture();
    else if (isHeld && std::exchange(m_debounceTimer, nullptr))
        m_isDueAfterHold = true;
}

void TranslationPass::startCapturePass()
{
    if (!m_source.isOnScreen())
        return;
    m_debounceTimer.reset();
    m_isDueAfterHold = false;
    ++m_captureGeneration;
    m_view.passStarted();

    const Request request{.generation = m_captureGeneration,
                          .area = m_source.glassArea(),
                          .exclusionRects = m_source.windowControlExclusionRects(controlPadding)};
    // The workers end before the pass does, so that they may refer to it.
    m_workers.start([this, request, weak = std::weak_ptr(m_self)] {
        m_mainQueue.post([weak, request, outcome = run(request)] {
            if (const auto self = weak.lock())
                (*self)->finish(request, outcome);
        });
    });
}

void TranslationPass::supersede()
{
    m_debounceTimer.reset();
    m_isDueAfterHold = false;
    ++m_captureGeneration;
    m_view.passEnded();
}

bool TranslationPass::isCurrent(const Request &request) const
{
    return request.generation == m_captureGeneration;
}

TranslationPass::Outcome TranslationPass::run(const Request &request) const
{
    const auto isWanted = [this, &request] { return isCurrent(request); };
    const tl::unexpected superseded{ErrorCard()}; // not shown: the outcome of a superseded pass is dropped
    Reading reading;
    const auto finishStage = [&](const QString &stage) {
        reading.timings.finish(stage);
        return isWanted();
    };
    if (!isWanted())
        return superseded;

    const Result<QImage> image = captureGlassArea(m_steps.capture, request.area, m_texts);
    if (!image)
        return tl::unexpected(captureFailed(image.error()));
    if (!finishStage(u"capture"_s))
        return superseded; // reading it would only slow the newer pass down

    RecognizedBlocks found =
        m_steps.recognize(maskWindowButtons(*image, request.exclusionRects, request.area.glass.size()), isWanted);
    if (!finishStage(u"recognition"_s))
        return superseded; // nobody would see a translation, so no text leaves the computer for it
    if (found.blocks.isEmpty())
        return tl::unexpected(
            ErrorCard{m_texts.localized(u"沒有偵測到文字"_s),
                      m_texts.localized(u"請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。"_s)});

    Result<BlockTranslations> translations = m_steps.translate(found.blocks, isWanted);
    finishStage(u"translation"_s);
    if (!translations)
        return tl::unexpected(ErrorCard{m_texts.localized(u"翻譯失敗"_s), translations.error().description});

    reading.blocks = std::move(found.blocks);
    reading.translations = std::move(translations->texts);
    if (!translations->note.isEmpty())
        reading.notes.append(translations->note);
    if (found.areLinesLeftOut)
        reading.notes.append(m_texts.localized(u"文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。"_s));
    return reading;
}

TranslationPass::ErrorCard TranslationPass::captureFailed(const Failure &failure) const
{
    if (failure.domain == screenAccessDomain)
        return {m_texts.localized(u"需要螢幕錄製權限"_s), failure.description, ErrorCard::Button::AskForAccess};
    if (m_steps.capture.isGranted())
        return {m_texts.localized(u"無法擷取畫面"_s), failure.description};
    return {
        m_texts.localized(u"需要螢幕錄製權限"_s),
        m_texts.localized(
            u"請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。"_s),
        ErrorCard::Button::OpenSettings};
}

void TranslationPass::finish(const Request &request, const Outcome &outcome)
{
    if (!isCurrent(request))
        return; // the pane belongs to a newer pass
    m_view.passEnded();
    if (outcome)
        show(request, *outcome);
    else
        showCard(outcome.error());
}

void TranslationPass::show(const Request &request, const Reading &reading)
{
    const OverlayPlacement placement = placeOverlays(reading.blocks, reading.translations, request.area.glass.size(),
                                                     m_source.windowControlExclusionRects(controlPadding));
    m_view.showTranslations(placement.candidates, reading.notes.join(u'\n'));
    if (m_settings.read(settings::autoCopy) && !placement.copyList.isEmpty())
        m_steps.copy(placement.copyList.join(u'\n'));
    const QString source = joinedTexts(reading.blocks);
    const QString translated = reading.translations.join(u'\n');
    if (!source.isEmpty() && !translated.isEmpty())
        m_steps.record(source, translated);
    if (PassTimings::areReported()) {
        PassTimings timings = reading.timings;
        timings.finish(u"layout"_s);
        // Runs once the overlays are painted.
        m_reportTimer = m_scheduler.after(std::chrono::milliseconds::zero(), [timings]() mutable {
            timings.finish(u"paint"_s);
            timings.report();
        });
    }
}

void TranslationPass::showCard(const ErrorCard &card)
{
    if (card.button == ErrorCard::Button::OpenSettings)
        return m_view.showErrorCard(card.title, card.message, m_texts.localized(u"開啟系統設定"_s),
                                    m_steps.openScreenRecordingSettings);
    const bool mayAsk = card.button == ErrorCard::Button::AskForAccess;
    m_view.showErrorCard(card.title, card.message, m_texts.localized(mayAsk ? u"分享畫面…"_s : u"重試"_s),
                         [weak = std::weak_ptr(m_self), mayAsk] {
                             const auto self = weak.lock();
                             if (!self)
                                 return;
                             if (mayAsk)
                                 (*self)->m_steps.capture.allowAsking();
                             (*self)->startCapturePass();
                         });
}

} // namespace lucentra
