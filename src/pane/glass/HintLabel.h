#pragma once

#include "Callback.h"
#include "PassThroughHostingView.h"
#include "Transition.h"

#include <QEasingCurve>
#include <QFont>
#include <QImage>

#include <chrono>
#include <functional>

namespace lucentra {

/// A large white text with a soft shadow in the middle of the pane. The widget fills the pane and takes no clicks. The
/// text is smaller on a small pane, is broken at the last middle dot if it is too long for one line, and has a dark
/// ground over other text and on light glass.
class HintLabel : public PassThroughHostingView
{
public:
    explicit HintLabel(const QString &text, QWidget *parent = nullptr);

    /// Fades out and is then deleted.
    void fadeOut(std::chrono::milliseconds duration, QEasingCurve::Type easing);
    double opacity() const { return m_opacity.value(); }
    /// Called for each step of the fade.
    Callback<> onOpacityChanged;
    /// Whether it needs a dark ground. Called for each painting.
    std::function<bool()> isOverText;
    /// The text's place.
    QRect textRect() const;

private:
    /// What is drawn where.
    struct Setting
    {
        QString text;
        QFont font;
        QRect rect;
    };

    void paintText(QPainter &painter);
    Setting setting() const;
    Setting settingIn(const QFont &font) const;

    QImage m_picture; ///< the text with its shadow, for the current size and scale
    Transition m_opacity;
};

} // namespace lucentra
