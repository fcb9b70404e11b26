#include "PassThroughHostingView.h"

#include <QPainter>

#include <utility>

namespace lucentra {

PassThroughHostingView::PassThroughHostingView(std::function<void(QPainter &)> content, QWidget *parent)
    : QLabel(parent)
    , m_content(std::move(content))
{
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void PassThroughHostingView::setContent(const QString &text)
{
    setText(text);
    setAccessibleName(text); // as it is: a label's own name would lose ampersands
}

void PassThroughHostingView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_content(painter);
}

} // namespace lucentra
