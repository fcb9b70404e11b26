#pragma once

#include "Scheduler.h"

#include <QEasingCurve>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>
#include <memory>

class QWidget;

namespace lucentra {

class HintLabel;

/// The hints in the middle of the pane, at most one at a time. While the pane hasn't been used yet it is pristine and
/// shows its start hint. Main thread only.
class PaneHints : public QObject
{
public:
    /// The pane around the hints.
    struct Surroundings
    {
        std::function<void(QWidget *)> add; ///< puts a label on the pane, beneath the capsule, and shows it
        std::function<void()> changed;      ///< the hint is another, or less opaque
        std::function<bool()> isOverText;   ///< whether there is other text on the pane
    };

    PaneHints(QWidget &pane, Scheduler &scheduler, Surroundings surroundings);

    /// A persistent hint; the pane counts as unused (again).
    void showStart(const QString &text);
    /// Stays until another hint, or fades by itself if temporary; a temporary one means that the pane is being used.
    void show(const QString &text, bool temporary);
    /// A temporary hint that stays for as long as it takes to read, or until the user's next click or key.
    void showNote(const QString &text);
    void endNote();
    /// The pane is being used: the start hint fades. Nothing happens where that was known.
    void dismissStart();

    /// Where the hint's text stands on the pane, and how opaque it is: 0 where there is none.
    QRect textRect() const;
    double opacity() const;

    bool isPristine() const { return m_isPristine; }
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }
    /// The pane has another size.
    void layOut();
    /// Another view has come onto the pane: the hint stays above it, beneath the capsule.
    void stackUnder(QWidget *capsule);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fadeAfter(std::chrono::milliseconds time);
    void fade(std::chrono::milliseconds duration, QEasingCurve::Type easing);

    QWidget &m_pane;
    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    QPointer<HintLabel> m_label;
    std::unique_ptr<ScheduledTask> m_timer;
    bool m_isPristine = true;
    bool m_isNote = false;
    bool m_reduceMotion = false;
};

} // namespace lucentra
