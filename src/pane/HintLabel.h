#pragma once

#include "PassThroughHostingView.h"

#include <QEasingCurve>
#include <QImage>
#include <QVariantAnimation>

#include <chrono>

namespace lucentra {

/// A large white text with a soft shadow in the middle of the pane, over its whole area. Takes no clicks.
class HintLabel : public PassThroughHostingView
{
public:
    explicit HintLabel(const QString &text, QWidget *parent = nullptr);

    /// Fades to nothing, and is then deleted.
    void fadeOut(std::chrono::milliseconds duration, QEasingCurve::Type easing);
    double opacity() const { return m_opacity; }

private:
    void paintText(QPainter &painter);
    QRect textRect() const;

    double m_opacity = 1;
    QImage m_picture; ///< the text with its shadow, for the current size and scale
    QVariantAnimation m_fade;
};

} // namespace lucentra
