#pragma once

#include "Callback.h"
#include "Transition.h"

#include <QFrame>

class QGraphicsOpacityEffect;
class QLabel;
class QPushButton;

namespace lucentra {

/// A message with a button at the lower edge of a window. It slides in and fades.
class UndoBanner : public QFrame
{
    Q_OBJECT

public:
    UndoBanner();

    Callback<> onPressed;

    /// Shows a message. An empty one hides the banner, which keeps its last message while it fades.
    void setMessage(const QString &message);
    void setButtonText(const QString &text);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void progressChanged();

    QLabel *m_label;
    QPushButton *m_button;
    QGraphicsOpacityEffect *m_opacity;
    Transition m_progress; ///< from 0 (hidden) to 1 (shown)
};

} // namespace lucentra
