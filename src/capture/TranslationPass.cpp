#include "TranslationPass.h"

#include "LocalizationManager.h"
#include "MainQueue.h"
#include "OverlayPlacement.h"
#include "PassTimings.h"
#include "ScreenCapture.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "WindowButtonMask.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Far more than superseded passes can wait for a service at once: each ends after 45 seconds at the latest.
constexpr int mostPasses = 512;
/// When texts are tried again that a service can translate once its data is built.
constexpr std::chrono::milliseconds notReadyDelay{2000};
/// How long outdated translations stay while new ones are awaited. They don't go at once, so that nothing blinks.
constexpr std::chrono::milliseconds longestOutdated{1000};

} // namespace

/// What a pass or a look is asked for.
struct TranslationPass::Request
{
    QPointer<QObject> alive; ///< context of what is posted
    qint64 generation = 0;
    GlassArea area;
    QList<QRectF> exclusionRects;
    // For a look only:
    std::optional<ScreenChange> change;
    std::shared_ptr<const ScreenMemory> former;
    QList<TextLine> formerLines() const { return former ? former->screen.lines : QList<TextLine>(); }
};

/// What was found, with its translations.
struct TranslationPass::Reading
{
    ScreenMemory memory;
    QStringList sources;      ///< the new texts
    QStringList translations; ///< of the new texts
    QStringList notes;
    PassTimings timings;
    LookReport report; ///< as far as a worker knows
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
    bool mayPass = true; ///< another pass may succeed although the screen doesn't change
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
    return m_settings.read(settings::triggerMode) == TriggerMode::AfterMoving && !m_source.isInputMode() &&
           !m_isFollowing;
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
    dropLook();
    m_view.setProcessing(true);

    m_isRunning = true;
    m_isOutdated = false;
    start({.alive = &m_alive,
           .generation = m_captureGeneration,
           .area = m_source.glassArea(),
           .exclusionRects = m_source.windowControlExclusionRects(controlPadding)});
}

void TranslationPass::look(const ScreenChange &change, std::function<void(const LookReport &)> done)
{
    m_lookDone = std::move(done);
    start({.alive = &m_alive,
           .generation = m_captureGeneration,
           .area = m_source.glassArea(),
           .exclusionRects = m_source.windowControlExclusionRects(controlPadding),
           .change = change,
           .former = m_memory});
}

void TranslationPass::start(const Request &request)
{
    // The workers end before the pass does, so that they may refer to it.
    m_workers.start([this, request] {
        m_mainQueue.post(request.alive, [this, request, outcome = run(request)] { finish(request, outcome); });
    });
}

std::optional<FollowedLines> TranslationPass::follow(const QImage &picture, const QRegion &partial)
{
    m_current = picture;
    if (!m_memory || m_isRunning)
        return std::nullopt;
    ScreenMemory former = *m_memory;
    former.screen.preliminary |= partial;
    const auto moved = former.movedOn(m_current);
    if (!moved)
        return std::nullopt;
    m_memory = std::make_shared<const ScreenMemory>(*moved);
    m_view.changeTranslations(placementOf(*m_memory, m_source.glassArea()).candidates);
    return moved->comparedWith(former, m_current);
}

OverlayPlacement TranslationPass::placementOf(const ScreenMemory &memory, const GlassArea &area) const
{
    return placeOverlays(memory.textBlocks(), memory.translations(), area.glass.size(),
                         m_source.windowControlExclusionRects(controlPadding));
}

void TranslationPass::supersede()
{
    m_debounceTimer.reset();
    m_isDueAfterHold = false;
    m_isRunning = false;
    forgetScreen();
    m_view.setProcessing(false);
}

void TranslationPass::forgetScreen()
{
    m_isOutdated = true;
    if (m_isRunning)
        return;
    ++m_captureGeneration;
    m_memory.reset();
    m_current = {};
    dropLook();
}

bool TranslationPass::isCurrent(const Request &request) const
{
    return request.generation == m_captureGeneration;
}

TranslationPass::Outcome TranslationPass::run(const Request &request)
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

    Result<QImage> image =
        request.change ? request.change->picture : captureGlassArea(m_steps.capture, request.area, m_texts);
    if (!image)
        return tl::unexpected(captureFailed(image.error()));
    if (!finishStage(u"capture"_s))
        return superseded; // reading it would only slow the newer pass down

    bool areLinesLeftOut = false;
    const QImage masked = maskWindowButtons(*std::move(image), request.exclusionRects, request.area.glass.size());
    const QRegion changed = request.change ? request.change->changed : QRegion(masked.rect());
    const auto read = [&](const QRect &part) {
        const bool isMoving = request.change && (changed - request.change->moving).intersected(part).isEmpty();
        RecognizedLines found;
        if (isMoving)
            found = m_steps.recognize(masked, part, ReadingEffort::Slight, isWanted);
        if (!isMoving || hasNews(found.lines, request.formerLines()))
            found =
                m_steps.recognize(masked, part, request.change ? ReadingEffort::Hasty : ReadingEffort::Full, isWanted);
        areLinesLeftOut = areLinesLeftOut || found.areLinesLeftOut;
        return found.lines;
    };
    reading.memory.screen = readAgain(request.former ? request.former->screen : ScreenReading(), masked, changed, read);
    if (request.change)
        reading.report.running = takeRunningLines(reading.memory.screen.lines, request.formerLines(), masked.size(),
                                                  request.change->moving, request.change->running);
    if (!finishStage(u"recognition"_s))
        return superseded; // nobody would see a translation, so no text leaves the computer for it
    if (reading.memory.screen.lines.isEmpty() && !request.change)
        return tl::unexpected(
            ErrorCard{.title = m_texts.localized(u"沒有偵測到文字"_s),
                      .message = m_texts.localized(u"請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。"_s),
                      .mayPass = false});

    const auto failure = translate(reading, request, isWanted);
    finishStage(u"translation"_s);
    if (failure && !request.change)
        return tl::unexpected(*failure);
    reading.report.hasFailed = failure.has_value();
    if (failure)
        reading.notes.append(failure->message);
    if (areLinesLeftOut)
        reading.notes.append(m_texts.localized(u"文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。"_s));
    return reading;
}

std::optional<TranslationPass::ErrorCard> TranslationPass::translate(Reading &reading, const Request &request,
                                                                     const std::function<bool()> &isWanted)
{
    const QSize size = reading.memory.screen.picture.size();
    const ScreenChange change = request.change.value_or(ScreenChange());
    reading.report.cut = cutLines(reading.memory.screen.lines, request.formerLines(), size, change.written);
    BlockChange compared = compareBlocks(
        request.former ? request.former->blocks : QList<ShownBlock>(),
        composeBlocks(reading.memory.screen.lines, size, m_settings.read(settings::translationUnit), m_steps.isPhrase),
        size, change.unsettled | reading.report.cut, change.time);
    reading.report.again = compared.again;

    QList<TextBlock> unknown;
    for (const qsizetype index : std::as_const(compared.wanted)) {
        ShownBlock &shown = compared.blocks[index];
        const auto known = m_isFollowing && m_steps.known ? m_steps.known(shown.block.text) : std::nullopt;
        shown.translation = known.value_or(shown.translation);
        shown.isTranslated = known.has_value();
        if (!known)
            unknown.append(shown.block);
    }
    const auto waitUntil = [&](std::chrono::milliseconds time) {
        reading.report.again = std::min(reading.report.again.value_or(time), time);
    };
    std::optional<BlockTranslations> answer;
    std::optional<ErrorCard> failure;
    if (!unknown.isEmpty() && change.time < change.nextRequest) {
        waitUntil(change.nextRequest);
    } else if (!unknown.isEmpty()) {
        reading.report.hasSent = true;
        reading.memory.blocks = compared.blocks;
        m_mainQueue.post(request.alive, [this, request, known = reading.memory] { awaitAnswer(request, known); });
        if (Result<BlockTranslations> result = m_steps.translate(unknown, isWanted)) {
            answer = std::move(*result);
            reading.notes.append(answer->note);
        } else {
            failure = ErrorCard{m_texts.localized(u"翻譯失敗"_s), result.error().description};
        }
    }
    qsizetype asked = 0;
    for (const qsizetype index : std::as_const(compared.wanted)) {
        ShownBlock &shown = compared.blocks[index];
        const qsizetype place = shown.isTranslated ? -1 : asked++;
        if (place >= 0 && !answer)
            continue;
        if (place >= 0 && m_isFollowing && answer->outcomes.value(place).kind == OnDeviceOutcome::Kind::NotReady) {
            waitUntil(change.time + notReadyDelay);
            continue;
        }
        if (place >= 0)
            shown.translation = textForBlock(unknown, answer->texts, place);
        shown.isTranslated = true;
        reading.sources.append(shown.block.text);
        if (place < 0 || place < answer->texts.size())
            reading.translations.append(shown.translation);
    }
    reading.memory.blocks = std::move(compared.blocks);
    reading.notes.removeAll(QString());
    return failure;
}

TranslationPass::ErrorCard TranslationPass::captureFailed(const Failure &failure) const
{
    if (failure.domain == screenAccessDomain)
        return {m_texts.localized(u"需要螢幕錄製權限"_s), failure.description, ErrorCard::Button::AskForAccess};
    if (failure.domain == screenServiceDomain || m_steps.capture.isGranted())
        return {m_texts.localized(u"無法擷取畫面"_s), failure.description};
    return {
        m_texts.localized(u"需要螢幕錄製權限"_s),
        m_texts.localized(
            u"請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。"_s),
        ErrorCard::Button::OpenSettings};
}

void TranslationPass::finish(const Request &request, const Outcome &outcome)
{
    if (request.change)
        return finishLook(request, outcome);
    if (!isCurrent(request))
        return; // the pane belongs to a newer pass
    m_isRunning = false;
    m_memory.reset();
    m_view.setProcessing(false);
    if (outcome)
        return show(request, *outcome);
    showCard(outcome.error());
    if (outcome.error().mayPass)
        onFailed();
}

void TranslationPass::awaitAnswer(const Request &request, const ScreenMemory &known)
{
    onSent();
    if (request.change && isCurrent(request))
        m_patience = m_scheduler.after(longestOutdated, [this, known] { showSeen(known); });
}

/// What a look has seen, where it is now: it may have been scrolled.
std::optional<FollowedLines> TranslationPass::showSeen(const ScreenMemory &seen)
{
    m_memory = std::make_shared<const ScreenMemory>(seen);
    const auto moved = follow(m_current, seen.screen.partial);
    if (!moved)
        m_view.changeTranslations(placementOf(seen, m_source.glassArea()).candidates);
    return moved;
}

void TranslationPass::dropLook()
{
    m_patience.reset();
    if (const auto done = std::exchange(m_lookDone, nullptr))
        done({.isDropped = true});
}

void TranslationPass::finishLook(const Request &request, const Outcome &outcome)
{
    if (!isCurrent(request) || !outcome)
        return; // it was dropped
    m_patience.reset();
    const auto moved = showSeen(outcome->memory);
    if (m_settings.read(settings::autoCopy) && !outcome->translations.isEmpty())
        m_steps.copy(outcome->translations.join(u'\n'));
    store(*outcome);
    LookReport report = outcome->report;
    report.partial = outcome->memory.screen.partial;
    report.moved = moved;
    report.trouble = outcome->notes.join(u'\n');
    reportTimings(*outcome);
    const QSize size = request.change->picture.size();
    report.lines = placesOf(m_memory->screen.lines, size);
    report.news = differingLines(request.formerLines(), m_memory->screen.lines, size);
    std::exchange(m_lookDone, nullptr)(report);
}

void TranslationPass::store(const Reading &reading) const
{
    const QString source = reading.sources.join(u'\n');
    const QString translated = reading.translations.join(u'\n');
    if (!source.isEmpty() && !translated.isEmpty())
        m_steps.record(source, translated);
}

void TranslationPass::show(const Request &request, const Reading &reading)
{
    const ScreenMemory &memory = reading.memory;
    const OverlayPlacement placement = placementOf(memory, request.area);
    if (m_isFollowing && !m_isOutdated)
        m_memory = std::make_shared<const ScreenMemory>(memory);
    QStringList notes = reading.notes;
    if (notes.isEmpty() && m_steps.recommendsParagraphs &&
        m_steps.recommendsParagraphs(memory.screen.lines, memory.screen.picture.size()))
        notes.append(
            m_texts.localized(u"逐行翻譯會切斷句子。若譯文不通順，請在設定的「翻譯」中把「翻譯單位」改為「段落」。"_s));
    m_view.showTranslations(placement.candidates, notes.join(u'\n'));
    if (m_settings.read(settings::autoCopy) && !placement.copyList.isEmpty())
        m_steps.copy(placement.copyList.join(u'\n'));
    store(reading);
    reportTimings(reading);
    if (reading.report.again)
        onFailed();
}

void TranslationPass::reportTimings(const Reading &reading)
{
    if (!PassTimings::areReported())
        return;
    PassTimings timings = reading.timings;
    timings.finish(u"layout"_s);
    // Runs once the overlays are painted.
    m_reportTimer = m_scheduler.after(std::chrono::milliseconds::zero(), [timings]() mutable {
        timings.finish(u"paint"_s);
        timings.report();
    });
}

void TranslationPass::showCard(const ErrorCard &card)
{
    if (card.button == ErrorCard::Button::OpenSettings)
        return m_view.showErrorCard(card.title, card.message, m_texts.localized(u"開啟系統設定"_s),
                                    m_steps.openScreenRecordingSettings);
    const bool mayAsk = card.button == ErrorCard::Button::AskForAccess;
    m_view.showErrorCard(card.title, card.message, m_texts.localized(mayAsk ? u"分享畫面…"_s : u"重試"_s),
                         [this, alive = QPointer<QObject>(&m_alive), mayAsk] {
                             if (!alive)
                                 return;
                             if (mayAsk)
                                 m_steps.capture.allowAsking();
                             startCapturePass();
                         });
}

} // namespace lucentra
