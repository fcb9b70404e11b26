#pragma once

#include "PassThroughContainerView.h"

namespace lucentra {

/// Three strokes across the pane's lower right corner, where it can be resized. Takes no clicks.
class GripView : public PassThroughContainerView
{
public:
    static constexpr int side = 24;

    explicit GripView(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
