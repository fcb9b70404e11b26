#pragma once

#include <QFrame>

namespace lucentra {

/// The rounded background of a section's rows, with a thin line between rows, in the colours of the palette.
class FormPlate : public QFrame
{
public:
    /// The boolean property of a row that has no line above it.
    static constexpr char continuesRow[] = "continuesRow";

    explicit FormPlate(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
