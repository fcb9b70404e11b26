#pragma once

#include <QLabel>

#include <functional>

class QPainter;

namespace lucentra {

/// Shows a text that a function paints, and takes no pointer events. To assistive programs it is a label.
class PassThroughHostingView : public QLabel
{
public:
    /// `content` paints the view in the view's coordinates.
    explicit PassThroughHostingView(std::function<void(QPainter &)> content, QWidget *parent = nullptr);

protected:
    void setContent(const QString &text);
    void paintEvent(QPaintEvent *event) override;

private:
    const std::function<void(QPainter &)> m_content;
};

} // namespace lucentra
