#pragma once

#include <QFrame>

namespace lucentra {

/// The rounded plate that a section's rows stand on, with a thin line between two rows. Its colours are the palette's.
class FormPlate : public QFrame
{
public:
    explicit FormPlate(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
