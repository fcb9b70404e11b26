#pragma once

#include <QProgressBar>
#include <QVariantAnimation>

namespace lucentra {

/// A small wheel that turns while something is going on whose end isn't known.
class ProgressIndicator : public QProgressBar
{
public:
    explicit ProgressIndicator(QWidget *parent = nullptr);

    void setOpacity(double opacity);
    /// How far the wheel has come, from 0 to 1: while it comes and goes it is paler and smaller.
    void setPresence(double presence);
    /// Whether the wheel turns; it stands still under reduced motion.
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
