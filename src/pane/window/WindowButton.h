#pragma once

#include <QAbstractButton>

namespace lucentra {

/// One of the window's own three buttons: a small calm circle that shows its sign while the pointer is near.
class WindowButton : public QAbstractButton
{
public:
    enum class Kind { Close, Minimize, Zoom };

    /// The side of the square that takes clicks, in points.
    static constexpr int side = 18;

    explicit WindowButton(Kind kind, QWidget *parent = nullptr);

    /// The pointer is over one of the three buttons: all three show their signs.
    void setRevealed(bool revealed);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintSign(QPainter &painter, QPointF center) const;

    const Kind m_kind;
    bool m_isRevealed = false;
};

} // namespace lucentra
