#include "WidgetFade.h"

#include <QEasingCurve>
#include <QGraphicsOpacityEffect>
#include <QPropertyAnimation>
#include <QWidget>

#include <utility>

namespace lucentra {

void fadeWidget(QWidget &widget, double from, double to, std::chrono::milliseconds duration, std::function<void()> done)
{
    auto *effect = new QGraphicsOpacityEffect(&widget);
    effect->setOpacity(from);
    widget.setGraphicsEffect(effect); // ends the fade before it
    auto *animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(int(duration.count()));
    animation->setEasingCurve(QEasingCurve::OutSine);
    QObject::connect(animation, &QPropertyAnimation::finished, &widget,
                     [&widget, isOpaque = to >= 1, done = std::move(done)] {
                         if (done)
                             done();
                         if (isOpaque)
                             widget.setGraphicsEffect(nullptr); // an effect costs a picture per frame
                     });
    animation->start();
}

} // namespace lucentra
