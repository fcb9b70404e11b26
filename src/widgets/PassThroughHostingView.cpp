#include "PassThroughHostingView.h"

#include <QPainter>

#include <utility>

namespace lucentra {

PassThroughHostingView::PassThroughHostingView(const QString &text, std::function<void(QPainter &)> content,
                                               QWidget *parent)
    : QLabel(parent)
    , m_content(std::move(content))
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setAccessibleName(text); // as it is: a label's own name would lose ampersands
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void PassThroughHostingView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_content(painter);
}

} // namespace lucentra
