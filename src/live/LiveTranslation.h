#pragma once

#include "ChangeSettler.h"
#include "RequestLimit.h"
#include "Scheduler.h"
#include "ScreenStream.h"
#include "TranslationPass.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class PassSource;
class PowerState;
class SettingsStore;

/// Follows what changes beneath the pane and has the pass look at it, as long as the setting is on, the pane is on a
/// screen and at rest, and no text is typed on it.
///
/// One look at a time, with pauses between them, so that in the long run they take half of the time at most, without
/// what a service takes. Texts go to a service within the limits of `RequestLimit`, more rarely after failures.
class LiveTranslation : public QObject
{
public:
    using Time = ChangeSettler::Time;

    /// How long the pane must not have moved.
    static constexpr Time restTime{300};
    /// The time between two pictures of the screen.
    static constexpr Time interval{40};

    struct Services
    {
        const SettingsStore &settings;
        Scheduler &scheduler;
        PowerState &power;
        std::function<Time()> now; ///< a clock that never goes back
    };

    LiveTranslation(const Services &services, TranslationPass &pass, const PassSource &pane);

    /// What went wrong at the last look, in the interface language; empty if it went well.
    std::function<void(const QString &)> onTrouble;
    /// Called after the setting has changed.
    std::function<void(bool isOn)> onSwitched;

    bool isOn() const;
    /// Takes the next picture of the pane's area.
    void add(const ScreenFrame &frame);
    /// To be called when the pane has moved, was resized, shown or hidden, or takes other text than the screen's:
    /// everything in the next picture is looked at once it rests.
    void startAgain();
    /// The user has taken hold of the pane, or has let go of it.
    void userHolds(bool isHeld);

private:
    /// Lines of which only a part was read.
    struct Partial
    {
        QRegion region;
        QImage picture; ///< that was looked at
        Time due{0};
    };

    bool isRemote() const;
    void switched();
    void lookAgain();
    void setLimit();
    void forgetFailures();
    void retryLater();
    void schedule(Time earliest = Time(0));
    void lookIfDue();
    QRegion takePartial(Time now);
    void finish(const ChangeSettler::Due &due, Time begun, const LookReport &report);
    void hasMoved(const FollowedLines &followed, Time now);
    void setTrouble(const QString &trouble);

    const Services m_services;
    TranslationPass &m_pass;
    const PassSource &m_pane;
    ChangeSettler m_settler;
    RequestLimit m_limit;
    std::unique_ptr<ScheduledTask> m_task;
    std::optional<Time> m_again; ///< a look that is due although nothing changes
    QList<Partial> m_partial;
    Time m_notBefore{0};         ///< of the next look
    Time m_sent{0};              ///< when texts last went to the engine
    Time m_paid{0};              ///< when the looks until now and their pauses would end, one after another
    Time m_scrollBegun{0};       ///< when the lines beneath began to move without a pause,
    Time m_scrolled{0};          ///< and when they last did
    Time m_retry{0};             ///< no request before, after failures
    int m_failures = 0;          ///< in a row
    bool m_isHeld = false;
    bool m_isLooking = false;
    QString m_trouble;
};

} // namespace lucentra
