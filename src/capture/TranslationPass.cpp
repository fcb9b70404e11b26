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

QString joinedTexts(const QList<TextBlock> &blocks)
{
    QStringList texts;
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts.join(u'\n');
}

} // namespace

/// What a pass carries from stage to stage, by value.
struct TranslationPass::Context
{
    qint64 generation = 0;
    GlassArea area;
    QList<QRectF> exclusionRects;
    std::shared_ptr<PassTimings> timings; ///< nothing where nobody wants to know

    void finish(const QString &stage) const
    {
        if (timings)
            timings->finish(stage);
    }
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
}

TranslationPass::~TranslationPass()
{
    *m_captureGeneration = -1; // no pass is current any more: its workers end soon
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
    ++*m_captureGeneration;
    m_view.passStarted();

    const Context context{.generation = *m_captureGeneration,
                          .area = m_source.glassArea(),
                          .exclusionRects = m_source.windowControlExclusionRects(controlPadding),
                          .timings = PassTimings::start()};
    // The workers end before the pass does, so that they may refer to it.
    m_workers.start([this, context] { run(context); });
}

void TranslationPass::supersede()
{
    m_debounceTimer.reset();
    m_isDueAfterHold = false;
    ++*m_captureGeneration;
    m_view.passEnded();
}

void TranslationPass::postHandler(std::function<void(TranslationPass &)> handler)
{
    m_mainQueue.post([weak = std::weak_ptr(m_self), handler = std::move(handler)] {
        if (const auto self = weak.lock())
            handler(**self);
    });
}

void TranslationPass::run(const Context &context)
{
    const auto isWanted = [last = m_captureGeneration, generation = context.generation] { return generation == *last; };
    if (!isWanted())
        return;
    const Result<QImage> image = captureGlassArea(m_steps.capture, context.area, m_texts);
    if (!image) {
        postHandler([context, failure = image.error()](TranslationPass &pass) {
            pass.handleCaptureFailure(context.generation, failure);
        });
        return;
    }
    context.finish(u"capture"_s);
    if (!isWanted())
        return; // reading it would only slow the newer pass down
    const RecognizedBlocks found =
        m_steps.recognize(maskWindowButtons(*image, context.exclusionRects, context.area.glass.size()), isWanted);
    if (!isWanted())
        return; // nobody would see a translation, so no text leaves the machine for it
    if (found.blocks.isEmpty()) {
        postHandler([context](TranslationPass &pass) { pass.handleNoTextDetected(context.generation); });
        return;
    }
    context.finish(u"recognition"_s);
    const auto translated = [weak = std::weak_ptr(m_self), &queue = m_mainQueue, context,
                             found](const Result<BlockTranslations> &translations) {
        queue.post([weak, context, found, translations] {
            if (const auto self = weak.lock())
                (*self)->handleTranslationResult(translations, context, found);
        });
    };
    m_steps.translateBlocks(found.blocks, translated, isWanted);
}

bool TranslationPass::endsBusyState(qint64 generation)
{
    if (!isCurrent(generation))
        return false; // a newer pass has started; the pane is its business
    m_view.passEnded();
    return true;
}

void TranslationPass::handleCaptureFailure(qint64 generation, const Failure &failure)
{
    if (!endsBusyState(generation))
        return;
    if (m_steps.capture.isGranted()) {
        showRetryCard(m_texts.localized(u"無法擷取畫面"_s), failure.description);
        return;
    }
    m_view.showErrorCard(
        m_texts.localized(u"需要螢幕錄製權限"_s),
        m_texts.localized(
            u"請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。"_s),
        m_texts.localized(u"開啟系統設定"_s), m_steps.openScreenRecordingSettings);
}

void TranslationPass::handleNoTextDetected(qint64 generation)
{
    if (!endsBusyState(generation))
        return;
    showRetryCard(m_texts.localized(u"沒有偵測到文字"_s),
                  m_texts.localized(u"請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。"_s));
}

void TranslationPass::handleTranslationResult(const Result<BlockTranslations> &translations, const Context &context,
                                              const RecognizedBlocks &found)
{
    if (!endsBusyState(context.generation))
        return;
    if (!translations) {
        showRetryCard(m_texts.localized(u"翻譯失敗"_s), translations.error().description);
        return;
    }
    context.finish(u"translation"_s);
    QStringList notes(translations->note);
    if (found.areLinesLeftOut)
        notes.append(m_texts.localized(u"文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。"_s));
    notes.removeAll(QString());
    placeTranslationOverlays(found.blocks, translations->texts, context.area.glass.size(), notes.join(u'\n'));
    context.finish(u"layout"_s);
    const QString source = joinedTexts(found.blocks);
    const QString translated = translations->texts.join(u'\n');
    if (!source.isEmpty() && !translated.isEmpty())
        m_steps.record(source, translated);
    if (context.timings) {
        m_reportTimer = m_scheduler.after(std::chrono::milliseconds::zero(), [context] { // once they are painted
            context.finish(u"paint"_s);
            context.timings->report();
        });
    }
}

void TranslationPass::placeTranslationOverlays(const QList<TextBlock> &blocks, const QStringList &translations,
                                               const QSizeF &paneSize, const QString &note)
{
    const OverlayPlacement placement =
        placeOverlays(blocks, translations, paneSize, m_source.windowControlExclusionRects(controlPadding));
    m_view.showTranslations(placement.candidates, note);
    if (m_settings.read(settings::autoCopy) && !placement.copyList.isEmpty())
        m_steps.copy(placement.copyList.join(u'\n'));
}

void TranslationPass::showRetryCard(const QString &title, const QString &message)
{
    m_view.showErrorCard(title, message, m_texts.localized(u"重試"_s), [weak = std::weak_ptr(m_self)] {
        if (const auto self = weak.lock())
            (*self)->startCapturePass();
    });
}

} // namespace lucentra
