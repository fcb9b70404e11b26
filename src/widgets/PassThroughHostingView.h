#pragma once

#include <QLabel>

#include <functional>

class QPainter;

namespace lucentra {

/// Shows a text that is drawn by its content and never takes the pointer. To assistive programs it is a label.
class PassThroughHostingView : public QLabel
{
public:
    /// `content` paints the view in its own points, origin top-left; it belongs to the view.
    PassThroughHostingView(const QString &text, std::function<void(QPainter &)> content, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const std::function<void(QPainter &)> m_content;
};

} // namespace lucentra
