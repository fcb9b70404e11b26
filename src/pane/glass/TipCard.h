#pragma once

#include "Callback.h"

#include <QString>
#include <QWidget>

class QLabel;

namespace lucentra {

class GlassBackdropView;

/// A small card on the pane that explains something once, with a button that closes it and perhaps one that does what
/// it is about. Elsewhere it is a part of the pane for the pointer.
class TipCard : public QWidget
{
public:
    static constexpr int greatestWidth = 320;

    /// Without `actionTitle` there is one button. The card's ground is made of the glass.
    TipCard(const QString &text, const QString &actionTitle, const QString &closeTitle, const GlassBackdropView &glass,
            QWidget *parent);

    // Both may delete the card later, not at once.
    Callback<> onAction;
    Callback<> onClosed; ///< by the user; also called after `onAction`

    /// The size on a pane of that width.
    QSize sizeOn(int paneWidth) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const GlassBackdropView &m_glass;
    QLabel *m_label;
};

} // namespace lucentra
