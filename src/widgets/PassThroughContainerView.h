#pragma once

#include <QWidget>

namespace lucentra {

/// Holds other views and never takes the pointer: clicks reach what lies beneath.
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
