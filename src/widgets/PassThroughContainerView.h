#pragma once

#include <QWidget>

namespace lucentra {

/// Holds other views and takes no pointer events: clicks reach the view beneath.
class PassThroughContainerView : public QWidget
{
public:
    explicit PassThroughContainerView(QWidget *parent = nullptr)
        : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }
};

} // namespace lucentra
