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

/// The hints in the middle of the pane, at most one at a time. Until the pane is used it is pristine and shows its
/// start hint.
class PaneHints : public QObject
{
public:
    struct Surroundings
    {
        std::function<void(QWidget *)> add; ///< puts a label on the pane, beneath the capsule, and shows it
        std::function<void()> changed;      ///< the hint or its opacity has changed
        std::function<bool()> isOverText;   ///< whether there is other text on the pane, or the pane is light
    };

    PaneHints(QWidget &pane, Scheduler &scheduler, Surroundings surroundings);

    /// Shows a persistent hint. The pane becomes pristine.
    void showStart(const QString &text);
    /// Shows a hint until the next one, or for a short time if it is temporary. With a temporary one the pane is no
    /// longer pristine.
    void showHint(const QString &text, bool temporary);
    /// Shows a temporary hint for the time it takes to read, or until the user's next click or key.
    void showNote(const QString &text);
    void endNote();
    /// The pane is no longer pristine: the start hint fades.
    void dismissPristineHint();

    /// The place of the hint's text on the pane, and its opacity: 0 if there is no hint.
    QRect textRect() const;
    double opacity() const;
    /// Whether a hint has a ground of its own.
    bool hasGround() const { return m_surroundings.isOverText(); }

    bool isPristine() const { return m_isPristine; }
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }
    /// To be called when the pane's size changes.
    void layOut();
    /// To be called when a view was added to the pane, so that the hint stays above it, beneath the capsule.
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
