#pragma once

#include "Scheduler.h"

#include <QEasingCurve>
#include <QPointer>
#include <QRect>

#include <functional>
#include <memory>

class QWidget;

namespace lucentra {

class HintLabel;

/// The hints in the middle of the pane, at most one at a time. While the pane hasn't been used yet it is pristine and
/// shows its start hint. Main thread only.
class PaneHints
{
public:
    static constexpr std::chrono::milliseconds temporaryTime{1500};

    /// `add` puts a label on the pane, beneath the capsule, and shows it; `changed` is told that the hint is another,
    /// or less opaque.
    PaneHints(QWidget &pane, Scheduler &scheduler, std::function<void(QWidget *)> add, std::function<void()> changed);

    /// A persistent hint; the pane counts as unused (again).
    void showStart(const QString &text);
    /// Stays until another hint, or fades by itself if temporary; a temporary one means that the pane is being used.
    void show(const QString &text, bool temporary, std::chrono::milliseconds time = temporaryTime);
    /// The pane is being used: the start hint fades. Nothing happens where that was known.
    void dismissStart();

    /// Where the hint's text stands on the pane, and how opaque it is: 0 where there is none.
    QRect textRect() const;
    double opacity() const;

    bool isPristine() const { return m_isPristine; }
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }
    /// The pane has another size.
    void layOut();

private:
    void fade(std::chrono::milliseconds duration, QEasingCurve::Type easing);

    QWidget &m_pane;
    Scheduler &m_scheduler;
    const std::function<void(QWidget *)> m_add;
    const std::function<void()> m_changed;
    QPointer<HintLabel> m_label;
    std::unique_ptr<ScheduledTask> m_timer;
    bool m_isPristine = true;
    bool m_reduceMotion = false;
};

} // namespace lucentra
