#pragma once

#include "PassThroughContainerView.h"
#include "Transition.h"

#include <QImage>

namespace lucentra {

/// The dark bubble beneath the capsule that explains the button under the pointer. Takes no clicks. Assistive programs
/// get the same text from the button.
class CapsuleTooltip : public PassThroughContainerView
{
public:
    explicit CapsuleTooltip(QWidget *parent);

    /// Shows a text beneath the capsule, right-aligned with it. `capsule` is in the parent's coordinates.
    void showText(const QString &text, const QRect &capsule);
    void hideText();
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }
    /// Empty if none is shown or it is fading out.
    const QString &text() const { return m_text; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void presenceChanged();
    void renderPicture();

    QString m_text;
    QRect m_capsule;
    QImage m_picture; ///< of the text; kept while it fades out
    bool m_reduceMotion = false;
    Transition m_presence;
};

} // namespace lucentra
