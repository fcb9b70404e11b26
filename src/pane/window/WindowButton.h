#pragma once

#include <QAbstractButton>

namespace lucentra {

/// One of the window's three buttons: a small circle that shows its sign while the pointer is over one of them.
class WindowButton : public QAbstractButton
{
public:
    enum class Kind { Close, Minimize, Zoom };

    /// The side of the square that takes clicks, in points.
    static constexpr int side = 18;

    explicit WindowButton(Kind kind, QWidget *parent = nullptr);

    /// Whether the button shows its sign.
    void setRevealed(bool revealed);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintSign(QPainter &painter, QPointF center) const;

    const Kind m_kind;
    bool m_isRevealed = false;
};

} // namespace lucentra
