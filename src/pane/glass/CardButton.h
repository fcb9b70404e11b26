#pragma once

#include <QFont>
#include <QPushButton>

class QLabel;

namespace lucentra {

/// A button on a card on the glass, in the accent colour or without a ground. Its focus ring is drawn around it.
class CardButton : public QPushButton
{
public:
    enum class Look { Accent, Plain };

    static constexpr int groundHeight = 26;
    /// The widget is larger than its ground by this on each side, for the focus ring.
    static constexpr int ringRoom = 3;

    CardButton(const QString &text, Look look, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look m_look;
};

/// A text on a card: white, of a height in pixels and an opacity from 0 to 1, in lines from the upper left corner on.
QLabel *addCardLabel(const QString &text, int pixels, QFont::Weight weight, double opacity, QWidget *parent);

} // namespace lucentra
