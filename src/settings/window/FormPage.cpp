#include "FormPage.h"

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace lucentra {

FormPage::FormPage()
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("content"));
    m_sections = new QVBoxLayout(content);
    m_sections->setContentsMargins(20, 16, 20, 20);
    m_sections->setSpacing(18);
    m_sections->addStretch(1);
    content->installEventFilter(this);
    setWidget(content);
    // The plates are painted on the colour of the window.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void FormPage::addSection(QWidget *section)
{
    m_sections->insertWidget(m_sections->count() - 1, section);
}

int FormPage::neededWidth() const
{
    return widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
}

QSize FormPage::minimumSizeHint() const
{
    constexpr int leastHeight = 200;
    return {neededWidth(), leastHeight};
}

QSize FormPage::sizeHint() const
{
    return minimumSizeHint();
}

bool FormPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        updateGeometry(); // another language may need another width
    return QScrollArea::eventFilter(watched, event);
}

} // namespace lucentra
