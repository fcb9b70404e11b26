#pragma once

#include "PassThroughHostingView.h"
#include "Scheduler.h"
#include "Transition.h"

#include <QEasingCurve>
#include <QFont>
#include <QImage>

#include <functional>
#include <memory>

namespace lucentra {

/// The hints in the middle of the pane, at most one at a time: a large white text with a soft shadow. Until the pane is
/// used it is pristine and shows its start hint.
///
/// The view fills the pane, takes no clicks, and is hidden while there is no hint. The text is smaller on a small pane,
/// is broken at the last middle dot if it is too long for one line, and has a dark ground over other text and on light
/// glass.
class PaneHints : public PassThroughHostingView
{
public:
    struct Surroundings
    {
        std::function<void()> changed;    ///< the hint or its opacity has changed
        std::function<bool()> isOverText; ///< whether there is other text on the pane, or the pane is light
    };

    PaneHints(Scheduler &scheduler, Surroundings surroundings, QWidget *pane);

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

    /// The place of the hint's text on the pane, if there is a hint.
    QRect textRect() const { return setting().rect; }
    /// 0 if there is no hint.
    double opacity() const { return m_opacity.value(); }
    /// Whether a hint has a ground of its own.
    bool hasGround() const { return m_surroundings.isOverText(); }

    bool isPristine() const { return m_isPristine; }
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What is drawn where.
    struct Setting
    {
        QString text;
        QFont font;
        QRect rect;
    };

    void fadeAfter(std::chrono::milliseconds time);
    void fade(std::chrono::milliseconds duration, QEasingCurve::Type easing);
    void opacityChanged();
    void paintText(QPainter &painter);
    Setting setting() const;
    Setting settingIn(const QFont &font) const;

    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    QImage m_picture; ///< the text with its shadow, for the current size and scale
    Transition m_opacity;
    std::unique_ptr<ScheduledTask> m_timer;
    bool m_isPristine = true;
    bool m_isNote = false;
    bool m_reduceMotion = false;
};

} // namespace lucentra
