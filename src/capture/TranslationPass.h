#pragma once

#include "Callback.h"
#include "PassPane.h"
#include "Result.h"
#include "Scheduler.h"
#include "ScreenMemory.h"
#include "TextRecognition.h"
#include "Translations.h"

#include <QImage>
#include <QObject>
#include <QRegion>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class LocalizationManager;
class MainQueue;
class ScreenCapture;
class SettingsStore;

/// The steps of a pass that others implement. Capture, recognition and translation block, on a worker.
struct PassSteps
{
    ScreenCapture &capture;
    /// Recognizes the lines in a part of an image (pixels). May return early, with some of them, once the given
    /// function returns false.
    std::function<RecognizedLines(const QImage &, const QRect &, ReadingEffort, const std::function<bool()> &)>
        recognize;
    /// Translates blocks. Sends no further request once the given function, which may be called on any thread, returns
    /// false.
    std::function<Result<BlockTranslations>(const QList<TextBlock> &, const std::function<bool()> &)> translate;
    /// Whether a line is a phrase that the engine knows as a whole. Any thread; may be empty.
    std::function<bool(const QString &)> isPhrase{};
    /// The translation of a text that was made before and is still known. Any thread; may be empty.
    std::function<std::optional<QString>(const QString &)> known{};
    std::function<void(const QString &)> copy;                    ///< copies a text to the pasteboard
    std::function<void(const QString &, const QString &)> record; ///< adds source and translation to the history
    std::function<void()> openScreenRecordingSettings;
    /// Whether to recommend paragraphs to the user, because sentences are cut into these lines. True once at most.
    std::function<bool(const QList<TextLine> &, const QSizeF &)> recommendsParagraphs{};
};

/// What has changed beneath the pane.
struct ScreenChange
{
    QImage picture;    ///< what a capture of the pane's area would return
    QRegion changed;   ///< all that differs from the picture of the last look; pixels
    QRegion unsettled; ///< what is still changing of it
    QRegion moving;    ///< the part of it that doesn't rest, unless new writing stands where no line was
    QRegion running;   ///< where lines run past
    QRegion written;   ///< where there is writing before a moving picture
    std::chrono::milliseconds time{0};
    /// No request leaves before. A look that would need one shows what is known.
    std::chrono::milliseconds nextRequest{0};
};

/// What a look at a change has found.
struct LookReport
{
    bool isDropped = false;             ///< a pass has started, or the pane has moved: nothing came of the look
    QList<QRect> lines;                 ///< the places of all lines of text; pixels
    QList<QRect> news;                  ///< those of lines that have come, gone or changed
    QRegion partial;                    ///< lines to be read whole once they rest; pixels
    QRegion cut;                        ///< as `cutLines` returns it
    QRegion running;                    ///< as `takeRunningLines` returns it
    std::optional<FollowedLines> moved; ///< as `follow` returns it, if lines have moved since the picture was taken
    bool hasSent = false;               ///< texts to the engine
    bool hasFailed = false;
    QString trouble; ///< why something isn't translated, in the interface language; empty if all went well
    std::optional<std::chrono::milliseconds> again; ///< when to look again although nothing changes
};

/// The translation of the screen area beneath the pane, from the trigger to the overlays or the error card.
///
/// Passes are neither queued nor refused: a trigger starts a new pass. Results of an older one are dropped, and it
/// doesn't start further stages, so that nothing superseded is read or sent. One worker per pass captures, masks,
/// recognizes and translates; the outcome is shown on the main thread.
class TranslationPass
{
public:
    /// Delay of the automatic pass after a move or resize.
    static constexpr std::chrono::milliseconds debounceDelay{800};
    /// The margin around the window's buttons in which no text is read and no overlay is drawn, in points.
    static constexpr double controlPadding = 7.0;

    TranslationPass(const PassSource &source, PassView &view, PassSteps steps, const SettingsStore &settings,
                    const LocalizationManager &texts, MainQueue &mainQueue, Scheduler &scheduler);
    ~TranslationPass();

    /// To be called after the user moved or resized the pane. In the automatic mode, a pass starts 0.8 s after the
    /// release, unless the user holds the pane again by then or there is a further call.
    void scheduleDebouncedCapture(std::chrono::milliseconds sinceRelease = {});
    /// To be called when the user takes hold of the pane, which cancels a pending automatic pass, and when the user
    /// releases it without a move, which schedules that pass again.
    void userHolds(bool isHeld);
    /// Starts a pass. Does nothing while the pane isn't on a screen.
    void startCapturePass();
    /// Cancels the pending pass and the running one: nothing of it is shown, copied or recorded.
    void supersede();

    /// Looks at a change while the screen is followed: the same work as a pass's for what has changed and is new; the
    /// overlays change where they must, and nothing else on the pane does. One at a time, and not while a pass runs.
    /// One that is dropped is done at once, though a service may still be waited for.
    void look(const ScreenChange &change, std::function<void(const LookReport &)> done);
    /// Called when texts go to the engine.
    Callback<> onSent;
    /// Called after a pass has failed, or for some texts, that may succeed later although the screen doesn't change.
    Callback<> onFailed;
    /// Moves the overlays with their lines if these are at other places in a new picture of the pane's area (RGB32).
    /// Lines that were in `partial` (pixels) are unread at their new places. Returns nullopt if none have moved.
    std::optional<FollowedLines> follow(const QImage &picture, const QRegion &partial = {});
    /// Drops the look under way, and what was seen: the next look sees everything for the first time. The overlays stay
    /// until then, and a pass that runs still shows what it finds.
    void forgetScreen();
    /// Whether a pass runs.
    bool isRunning() const { return m_isRunning; }
    /// Whether looks follow the changes of the screen. No pass then starts by itself, and translations are remembered.
    void setFollowing(bool isFollowing) { m_isFollowing = isFollowing; }

private:
    struct Request;
    struct Reading;
    struct ErrorCard;
    using Outcome = tl::expected<Reading, ErrorCard>;

    bool startsByItself() const;
    bool isCurrent(const Request &request) const;
    void start(const Request &request);
    Outcome run(const Request &request);
    std::optional<ErrorCard> translate(Reading &reading, const Request &request, const std::function<bool()> &isWanted);
    ErrorCard captureFailed(const Failure &failure) const;
    void finish(const Request &request, const Outcome &outcome);
    void show(const Request &request, const Reading &reading);
    void store(const Reading &reading) const;
    void reportTimings(const Reading &reading);
    OverlayPlacement placementOf(const ScreenMemory &memory, const GlassArea &area) const;
    void finishLook(const Request &request, const Outcome &outcome);
    void awaitAnswer(const Request &request, const ScreenMemory &known);
    std::optional<FollowedLines> showSeen(const ScreenMemory &seen);
    void dropLook();
    void showCard(const ErrorCard &card);

    const PassSource &m_source;
    PassView &m_view;
    const PassSteps m_steps;
    const SettingsStore &m_settings;
    const LocalizationManager &m_texts;
    MainQueue &m_mainQueue;
    Scheduler &m_scheduler;
    std::unique_ptr<ScheduledTask> m_debounceTimer;
    bool m_isDueAfterHold = false; ///< a pass was pending when the user took hold of the pane
    std::unique_ptr<ScheduledTask> m_reportTimer;
    std::unique_ptr<ScheduledTask> m_patience;   ///< with a service that a look waits for
    std::atomic<qint64> m_captureGeneration = 0; ///< written on the main thread
    bool m_isRunning = false;
    bool m_isOutdated = false; ///< the screen was forgotten while the pass runs
    std::atomic<bool> m_isFollowing = false;
    std::shared_ptr<const ScreenMemory> m_memory;       ///< null if nothing was seen
    QImage m_current;                                   ///< the last picture of what is followed
    std::function<void(const LookReport &)> m_lookDone; ///< of the look under way; unset if there is none
    QObject m_alive;                                    ///< context of outcomes under way
    QThreadPool m_workers;                              ///< last member: its destructor waits for running tasks
};

} // namespace lucentra
