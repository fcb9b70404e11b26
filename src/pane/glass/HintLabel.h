#pragma once

#include "PassThroughHostingView.h"

#include <QEasingCurve>
#include <QFont>
#include <QImage>
#include <QVariantAnimation>

#include <chrono>
#include <functional>

namespace lucentra {

/// A large white text with a soft shadow in the middle of the pane, over its whole area; smaller on a pane too small
/// for it. Where one line isn't enough, what the last middle dot joins stands on lines of its own. Over other text it
/// has a dark ground. Takes no clicks.
class HintLabel : public PassThroughHostingView
{
public:
    explicit HintLabel(const QString &text, QWidget *parent = nullptr);

    /// Fades to nothing, and is then deleted.
    void fadeOut(std::chrono::milliseconds duration, QEasingCurve::Type easing);
    double opacity() const { return m_opacity; }
    /// Called with each step of the fade; left out where it isn't set.
    std::function<void()> onOpacityChanged;
    /// Whether other text is beneath; asked at each painting.
    std::function<bool()> isOverText;
    /// Where the text stands.
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

    double m_opacity = 1;
    QImage m_picture; ///< the text with its shadow, for the current size and scale
    QVariantAnimation m_fade;
};

} // namespace lucentra
