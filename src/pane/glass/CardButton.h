#pragma once

#include <QPushButton>

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

} // namespace lucentra
