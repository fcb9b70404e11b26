#pragma once

#include <QProgressBar>
#include <QVariantAnimation>

namespace lucentra {

/// A small turning wheel for work of unknown duration.
class ProgressIndicator : public QProgressBar
{
public:
    explicit ProgressIndicator(QWidget *parent = nullptr);

    void setOpacity(double opacity);
    /// From 0 (absent) to 1. In between, the wheel is paler and smaller.
    void setPresence(double presence);
    /// Whether the wheel turns. It stands still under reduced motion.
    void setTurning(bool turning);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVariantAnimation m_turn;
    int m_step = 0;
    double m_opacity = 1;
    double m_presence = 1;
};

} // namespace lucentra
