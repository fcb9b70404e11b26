#pragma once

#include <QFrame>

namespace lucentra {

/// The rounded plate that a section's rows stand on, with a thin line between two rows. Its colours are the palette's.
class FormPlate : public QFrame
{
public:
    /// Name of the property, a boolean, of a row without a line above it.
    static constexpr char continuesRow[] = "continuesRow";

    explicit FormPlate(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
