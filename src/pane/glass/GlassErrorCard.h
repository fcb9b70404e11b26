#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;

namespace lucentra {

class GlassBackdropView;

/// A card on the pane with an error message, with or without a button. It places itself on the pane. A message that
/// doesn't fit is cut off with an ellipsis. To assistive programs it is an alert.
class GlassErrorCard : public QWidget
{
public:
    static constexpr int leastWidth = 280;
    static constexpr int greatestWidth = 380;
    /// Between the card and the pane's sides, while there is room.
    static constexpr int sideDistance = 24;
    /// The distance of the card's centre below the pane's centre.
    static constexpr int belowCenter = 8;

    /// Without `actionTitle` there is no button. `action` may delete the card. The card's ground is made of the glass.
    GlassErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                   std::function<void()> action, const GlassBackdropView &glass, QWidget *parent);

    /// Lays the card out for a pane of that size. The widget is larger than the card by the room for the shadow.
    void placeOn(QSize pane);
    /// The visible card without its shadow, in pane points.
    QRect cardRect() const;
    QPushButton *actionButton() const { return m_button; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Form
    {
        int padding;
        int gap;
        bool hasButtonBeside; ///< instead of beneath the message
    };

    int layOut(int width, int greatestHeight, Form form);

    const GlassBackdropView &m_glass;
    const QString m_message;
    QLabel *m_titleLabel;
    QLabel *m_messageLabel;
    QPushButton *m_button = nullptr;
    QPoint m_symbolCorner;
    QImage m_shadow;
};

} // namespace lucentra
