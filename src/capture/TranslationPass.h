#pragma once

#include "PassPane.h"
#include "Result.h"
#include "Scheduler.h"
#include "TextRecognition.h"
#include "Translations.h"

#include <QImage>
#include <QStringList>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

class LocalizationManager;
class MainQueue;
class ScreenCapture;
class SettingsStore;

/// The steps of a pass that lie outside of it.
struct PassSteps
{
    ScreenCapture &capture;
    /// The lines of an image; called on a worker, may block. May end early, with any part of them, once the given
    /// function says that the image is no longer wanted.
    std::function<RecognizedBlocks(const QImage &, std::function<bool()>)> recognize;
    /// Translates blocks; called on a worker, completes once on any thread. Nothing more is sent once the given
    /// function says that the translations are no longer wanted; it may be called on any thread, also after the pass
    /// has ended.
    std::function<void(const QList<TextBlock> &, std::function<void(Result<BlockTranslations>)>, std::function<bool()>)>
        translateBlocks;
    std::function<void(const QString &)> copy;                    ///< puts a text on the pasteboard
    std::function<void(const QString &, const QString &)> record; ///< adds source and translation to the history
    std::function<void()> openScreenRecordingSettings;
};

/// One translation of the screen area beneath the pane, from its trigger to its overlays or its error card.
///
/// Passes are neither queued nor refused: a trigger starts a new one, and what an older one still brings is dropped
/// when it arrives; what it hasn't begun it leaves, so that nothing superseded is read or sent. Main thread only; a
/// worker of the pass captures, masks, recognizes and asks for the translation. Everything given must outlive it.
class TranslationPass
{
public:
    /// How long the pane must rest after a move or resize before a pass starts by itself.
    static constexpr std::chrono::milliseconds debounceDelay{800};
    /// How far around the window's buttons neither text is read nor overlays are drawn, in points.
    static constexpr double controlPadding = 7.0;

    TranslationPass(PassPane &pane, PassSteps steps, const SettingsStore &settings, const LocalizationManager &texts,
                    MainQueue &mainQueue, Scheduler &scheduler);
    ~TranslationPass();

    /// The menu's and the hotkey's action: translates, submits the typed text, or shows the hidden pane.
    void translateCurrentArea();
    /// The user moved or resized the pane and let go of it so long ago. In the automatic mode, the last call starts a
    /// pass 0.8 s after that, unless the user holds the pane again by then.
    void scheduleDebouncedCapture(std::chrono::milliseconds sinceRelease = {});
    /// The user takes hold of the pane, which drops a pass that is due, or lets go of it where it was, which makes that
    /// pass due again.
    void userHolds(bool isHeld);
    /// Starts a pass; does nothing while the pane is on no screen.
    void startCapturePass();
    /// Drops the pass that is due, and what is under way: nothing of it is shown, copied or recorded.
    void supersede();

private:
    struct Context;

    void run(const Context &context);
    bool startsByItself() const;
    bool isCurrent(qint64 generation) const { return generation == *m_captureGeneration; }
    bool endsBusyState(qint64 generation);
    void handleCaptureFailure(qint64 generation, const Failure &failure);
    void handleNoTextDetected(qint64 generation);
    void handleTranslationResult(const Result<BlockTranslations> &translations, const Context &context,
                                 const RecognizedBlocks &found);
    void placeTranslationOverlays(const QList<TextBlock> &blocks, const QStringList &translations,
                                  const QSizeF &paneSize);
    void showRetryCard(const QString &title, const QString &message);
    void postHandler(std::function<void(TranslationPass &)> handler);

    PassPane &m_pane;
    const PassSteps m_steps;
    const SettingsStore &m_settings;
    const LocalizationManager &m_texts;
    MainQueue &m_mainQueue;
    Scheduler &m_scheduler;
    std::unique_ptr<ScheduledTask> m_debounceTimer;
    bool m_isDueAfterHold = false; ///< a pass was due when the user took hold of the pane
    std::unique_ptr<ScheduledTask> m_reportTimer;
    /// Written on the main thread; workers look whether theirs is over.
    const std::shared_ptr<std::atomic<qint64>> m_captureGeneration = std::make_shared<std::atomic<qint64>>(0);
    /// Held weakly by every deferred stage; looked at on the main thread only.
    std::shared_ptr<TranslationPass *> m_self;
    QThreadPool m_workers; ///< last: its destruction waits for what still runs
};

} // namespace lucentra
