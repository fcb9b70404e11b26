#include "LiveTranslation.h"

#include "PassPane.h"
#include "PowerState.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TranslationEngine.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

/// When to ask again whether a pass still runs.
constexpr auto passPatience = 100ms;
/// The pause after a failure, which doubles with each one.
constexpr LiveTranslation::Time firstPause{2000};
constexpr LiveTranslation::Time longestPause{60'000};
/// The highest raw value of an engine that text is sent to.
constexpr qint64 lastRemoteEngine = 7;
/// Lines that seem to go on are read whole after so long without a change. What blinks changes sooner.
constexpr LiveTranslation::Time partialRest{700};
/// Lines that move are looked at after they have rested for so long, or have been moving for so long.
constexpr LiveTranslation::Time scrollRest{120};
constexpr LiveTranslation::Time longestScroll{1200};
/// Looks may take so much time in advance of their pauses: one after a rest needs none.
constexpr LiveTranslation::Time credit{500};
/// The pause after a look while power is saved, in times of its duration.
constexpr int savingPauses = 3;

} // namespace

LiveTranslation::LiveTranslation(const Services &services, TranslationPass &pass, const PassSource &pane)
    : m_services(services)
    , m_pass(pass)
    , m_pane(pane)
{
    const SettingsStore &settings = services.settings;
    settings.observe(settings::isLive, this, [this] { switched(); });
    settings.observe(settings::liveRequestsPerMinute, this, [this] { setLimit(); });
    settings.observe(settings::translationEngine, this, [this] {
        forgetFailures();
        lookAgain();
    });
    settings.observe(settings::translationUnit, this, [this] { lookAgain(); });
    settings.observe(settings::targetLanguageCode, this, [this] { lookAgain(); });
    for (qint64 engine = 1; engine <= lastRemoteEngine; ++engine)
        settings.observe(settings::consentKey(engine), this, [this] { forgetFailures(); });
    services.power.setChangeHandler([this] { setLimit(); });
    setLimit();
    pass.setFollowing(isOn());
    pass.onSent = [this] { m_limit.count(m_sent = m_services.now()); };
    pass.onFailed = [this] {
        retryLater();
        schedule();
    };
}

bool LiveTranslation::isOn() const
{
    return m_services.settings.read(settings::isLive);
}

bool LiveTranslation::isRemote() const
{
    return m_services.settings.read(settings::translationEngine) != qint64(TranslationEngine::apple);
}

void LiveTranslation::switched()
{
    m_pass.setFollowing(isOn());
    m_pass.forgetScreen();
    forgetFailures();
    setLimit();
    setTrouble({});
    startAgain();
    if (onSwitched)
        onSwitched(isOn());
}

/// The next attempt needn't wait any more: what it failed for may be settled.
void LiveTranslation::forgetFailures()
{
    m_failures = 0;
    m_retry = Time(0);
    if (m_again)
        m_again = m_services.now();
    schedule();
}

void LiveTranslation::setLimit()
{
    m_limit.set(int(std::clamp<qint64>(m_services.settings.read(settings::liveRequestsPerMinute), 1, 60)),
                isOn() && m_services.power.isSaving());
}

void LiveTranslation::startAgain()
{
    m_settler.reset();
    m_again.reset();
    m_partial.clear();
    m_task.reset();
    if (!isOn())
        return;
    m_pass.forgetScreen();
    m_notBefore = m_services.now() + restTime;
}

/// The same at once, since the next picture may be long in coming.
void LiveTranslation::lookAgain()
{
    const QImage shown = m_settler.picture();
    startAgain();
    if (!shown.isNull())
        m_settler.add(shown, shown.rect(), m_services.now());
    schedule();
}

void LiveTranslation::userHolds(bool isHeld)
{
    m_isHeld = isHeld;
    schedule();
}

void LiveTranslation::add(const ScreenFrame &frame)
{
    const QSizeF pane = m_pane.glassArea().glass.size();
    if (!isOn() || frame.picture.isNull() || m_pane.isInputMode() || pane.isEmpty())
        return;
    const int inset = int(std::lround(captureInset * frame.picture.width() / pane.width()));
    const QRect area = frame.picture.rect().adjusted(inset, inset, -inset, -inset);
    if (area.isEmpty())
        return;
    const Time now = m_services.now();
    m_settler.add(frame.picture.copy(area).convertToFormat(QImage::Format_RGB32),
                  frame.damage.translated(-inset, -inset), now);
    QRegion partial;
    for (const Partial &lines : std::as_const(m_partial))
        partial |= lines.region;
    const auto moved = m_pass.follow(m_settler.picture(), partial);
    if (moved)
        hasMoved(*moved, now);
    const bool isScrolling = now < m_scrolled + scrollRest;
    if (moved && !isScrolling)
        m_scrollBegun = now;
    if (moved || (isScrolling && 2 * frame.damage.height() > area.height())) // all lines may have left
        m_scrolled = now;
    schedule();
}

void LiveTranslation::hasMoved(const FollowedLines &followed, Time now)
{
    m_settler.linesMoved(followed.unread, followed.uncovered, now);
    m_settler.found(followed.lines, {});
    if (followed.areTextsLost)
        m_again = now;
}

void LiveTranslation::schedule(Time earliest)
{
    m_task.reset();
    std::optional<Time> next = m_settler.nextDue();
    if (m_again)
        next = std::min(next.value_or(*m_again), *m_again);
    if (!m_partial.isEmpty())
        next = std::min(next.value_or(m_partial[0].due), m_partial[0].due);
    if (!isOn() || m_isLooking || m_isHeld || !next || m_settler.picture().isNull() || !m_pane.isOnScreen() ||
        m_pane.isInputMode())
        return; // whatever ends that calls again
    const Time scrollEnd = std::min(m_scrolled + scrollRest, m_scrollBegun + longestScroll);
    const Time due = std::max({*next, m_notBefore, earliest, scrollEnd});
    m_task = m_services.scheduler.after(std::max(Time(0), due - m_services.now()), [this] { lookIfDue(); });
}

void LiveTranslation::lookIfDue()
{
    const Time now = m_services.now();
    if (m_pass.isRunning())
        return schedule(now + passPatience);
    ChangeSettler::Due due = m_settler.take(now);
    due.changed |= takePartial(now);
    const bool isAgain = m_again && *m_again <= now;
    if (due.changed.isEmpty() && !isAgain)
        return schedule();
    if (isAgain)
        m_again.reset();
    m_isLooking = true;
    m_pass.look({.picture = m_settler.picture(),
                 .changed = due.changed,
                 .unsettled = due.unsettled,
                 .moving = due.moving,
                 .running = due.running,
                 .written = due.written,
                 .time = now,
                 .nextRequest = std::max(m_retry, isRemote() ? m_limit.next(now) : Time(0))},
                [this, due, picture = m_settler.picture(), now](const LookReport &report) {
                    if (!report.partial.isEmpty())
                        m_partial.append({report.partial, picture, now + partialRest});
                    finish(due, now, report);
                });
}

/// The lines to be read whole now. Those that have changed meanwhile are left out: the look at the change notes them
/// again.
QRegion LiveTranslation::takePartial(Time now)
{
    QRegion rested;
    while (!m_partial.isEmpty() && m_partial[0].due <= now) {
        const Partial partial = m_partial.takeFirst();
        for (const QRect &rect : partial.region) {
            if (isSamePicture(partial.picture, m_settler.picture(), rect))
                rested |= rect;
        }
    }
    return rested;
}

void LiveTranslation::finish(const ChangeSettler::Due &due, Time begun, const LookReport &report)
{
    m_isLooking = false;
    const Time now = m_services.now();
    if (report.isDropped) {
        m_settler.putBack(due.changed, now);
        return schedule(now + passPatience);
    }
    m_settler.found(report.lines, report.news, report.running);
    m_settler.putBack(report.cut, now);
    m_again = report.again;
    if (report.moved)
        hasMoved(*report.moved, now);
    const Time worked = (report.hasSent && isRemote() ? m_sent : now) - begun;
    m_paid = std::max(m_paid, begun) + worked * (m_services.power.isSaving() ? 1 + savingPauses : 2);
    m_notBefore = std::max(m_notBefore, m_paid - credit);
    if (report.hasFailed) {
        retryLater();
    } else if (report.hasSent) {
        m_failures = 0;
        m_retry = Time(0);
    }
    if (report.hasFailed || report.hasSent || (m_failures > 0 && !report.again)) // nothing waits any more
        setTrouble(report.trouble);
    schedule();
}

void LiveTranslation::retryLater()
{
    m_retry = m_services.now() + std::min(longestPause, firstPause * (1 << std::min(m_failures++, 5)));
    m_again = std::min(m_again.value_or(m_retry), m_retry);
}

void LiveTranslation::setTrouble(const QString &trouble)
{
    if (std::exchange(m_trouble, trouble) != trouble && onTrouble)
        onTrouble(trouble);
}

} // namespace lucentra
