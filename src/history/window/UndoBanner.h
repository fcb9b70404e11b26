#pragma once

#include "Callback.h"

#include <QFrame>

class QGraphicsOpacityEffect;
class QLabel;
class QPushButton;
class QVariantAnimation;

namespace lucentra {

/// A message with a button at the lower edge of a window. It slides in and fades.
class UndoBanner : public QFrame
{
    Q_OBJECT

public:
    explicit UndoBanner(QWidget *parent = nullptr);

    Callback<> onPressed;

    /// Shows a message. An empty one hides the banner, which keeps its last message while it fades.
    void setMessage(const QString &message);
    void setButtonText(const QString &text);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void animate(bool shown);
    void setProgress(qreal progress);

    QLabel *m_label;
    QPushButton *m_button;
    QGraphicsOpacityEffect *m_opacity;
    QVariantAnimation *m_animation;
    bool m_isShown = false;
};

} // namespace lucentra
