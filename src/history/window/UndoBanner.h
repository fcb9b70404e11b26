#pragma once

#include <QFrame>

#include <functional>

class QGraphicsOpacityEffect;
class QLabel;
class QPushButton;
class QVariantAnimation;

namespace lucentra {

/// A message with a button at the lower edge of a window; it slides in and fades. Main thread only.
class UndoBanner : public QFrame
{
    Q_OBJECT

public:
    explicit UndoBanner(QWidget *parent = nullptr);

    std::function<void()> onPressed;

    /// Shows a message, or with an empty one goes away, keeping its last one meanwhile.
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
