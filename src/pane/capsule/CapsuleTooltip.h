#pragma once

#include "PassThroughContainerView.h"

#include <QImage>
#include <QVariantAnimation>

namespace lucentra {

/// The dark bubble beneath the capsule that says what the button under the pointer does. Takes no clicks; assistive
/// programs read the same from the button. Main thread only.
class CapsuleTooltip : public PassThroughContainerView
{
public:
    explicit CapsuleTooltip(QWidget *parent);

    /// Shows a text beneath the capsule, which is given in the parent's points, right-aligned with it.
    void showText(const QString &text, const QRect &capsule);
    void hideText();
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }
    /// Empty where none is shown, or it is going.
    const QString &text() const { return m_text; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void moveTowards(double presence);
    void setPresence(double presence);
    void renderPicture();

    QString m_text;
    QRect m_capsule;
    QImage m_picture; ///< of the text; stays while it goes
    bool m_reduceMotion = false;
    double m_presence = 0;
    QVariantAnimation m_motion;
};

} // namespace lucentra
