#include "HistoryListView.h"

#include "HistoryListModel.h"
#include "HistoryRowDelegate.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

#include <utility>

namespace lucentra {

namespace {

constexpr int wheelStep = 40; ///< points
constexpr int mostAttempts = 8;

} // namespace

HistoryListView::HistoryListView(HistoryListModel &model, HistoryRowDelegate &delegate)
    : m_model(model)
    , m_delegate(delegate)
{
    setModel(&model);
    setItemDelegate(&delegate);
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setBackgroundRole(QPalette::Window);
    viewport()->setBackgroundRole(QPalette::Window);
    verticalScrollBar()->setSingleStep(wheelStep);
    connect(&delegate, &HistoryRowDelegate::looksChanged, viewport(), qOverload<>(&QWidget::update));
    connect(&model, &QAbstractItemModel::modelReset, this, [this] { verticalScrollBar()->setValue(0); });
}

void HistoryListView::relayout()
{
    m_delegate.forgetLayouts();
    doItemsLayout();
}

void HistoryListView::toggleExpanded(const QModelIndex &index)
{
    if (index.isValid() && m_delegate.toggleExpanded(index))
        doItemsLayout();
}

QString HistoryListView::help(const QModelIndex &index, RowAction action) const
{
    return m_delegate.help(index, action);
}

/// Lays out the rows. Afterwards the row is at the given place again, except at the top, where new rows become visible.
void HistoryListView::layOutAround(const QPersistentModelIndex &row, int top)
{
    const QScopedValueRollback arranging(m_isArranging, true);
    const bool isAtTop = verticalScrollBar()->value() == 0;
    QListView::doItemsLayout();
    if (row.isValid() && !isAtTop)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(row).top() - top);
}

void HistoryListView::doItemsLayout()
{
    layOutAround(m_anchor, m_anchorTop);
    measureVisible();
}

/// Replaces the estimated heights of visible rows. Rows whose heights are known keep their places, so that one that
/// appears at the top grows upwards.
void HistoryListView::measureVisible()
{
    if (m_isArranging)
        return;
    const QScopedValueRollback arranging(m_isArranging, true);
    for (bool isChanged = true; std::exchange(isChanged, false);) {
        const QModelIndex first = indexAt({0, 0});
        QModelIndex known;
        for (QModelIndex index = first; index.isValid() && visualRect(index).top() < viewport()->height();
             index = index.siblingAtRow(index.row() + 1)) {
            if (!known.isValid() && m_delegate.isMeasured(index))
                known = index;
            isChanged = m_delegate.measure(index) || isChanged;
        }
        m_anchor = known.isValid() ? known : first;
        m_anchorTop = visualRect(m_anchor).top();
        if (isChanged)
            layOutAround(m_anchor, m_anchorTop);
    }
}

void HistoryListView::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    measureVisible();
}

void HistoryListView::resizeEvent(QResizeEvent *event)
{
    // Always without the place of the scroll bar, so that the width doesn't depend on the number of rows.
    m_delegate.setRowWidth(maximumViewportSize().width() - verticalScrollBar()->sizeHint().width());
    QListView::resizeEvent(event);
    doItemsLayout();
}

void HistoryListView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    // Rows that come into sight on the way turn out higher or lower and push this one away again, each just once.
    for (int attempt = 0, before = -1; index.isValid() && attempt < mostAttempts; ++attempt) {
        if (m_delegate.measure(index))
            doItemsLayout();
        QListView::scrollTo(index, hint);
        if (std::exchange(before, verticalScrollBar()->value()) == verticalScrollBar()->value())
            break;
    }
}

void HistoryListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        m_delegate.forgetLayout(m_model.item(row).id);
    QListView::dataChanged(topLeft, bottomRight, roles);
}

void HistoryListView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QRect exposed = event->rect();
    for (QModelIndex index = indexAt(exposed.topLeft()); index.isValid(); index = index.siblingAtRow(index.row() + 1)) {
        option.rect = visualRect(index);
        if (option.rect.top() > exposed.bottom())
            break;
        option.state.setFlag(QStyle::State_MouseOver, index == m_hovered);
        option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
        m_delegate.paint(&painter, option, index);
    }
}

std::optional<RowAction> HistoryListView::actionAt(QPoint point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return std::nullopt;
    return m_delegate.actionAt(index, point - visualRect(index).topLeft());
}

void HistoryListView::mousePressEvent(QMouseEvent *event)
{
    executeDelayedItemsLayout(); // entries may have been added or removed
    const auto action = actionAt(event->pos());
    if (action && event->button() == Qt::LeftButton)
        m_pressed = {m_model.item(indexAt(event->pos()).row()).id, *action};
    QListView::mousePressEvent(event);
}

void HistoryListView::mouseReleaseEvent(QMouseEvent *event)
{
    QListView::mouseReleaseEvent(event);
    executeDelayedItemsLayout();
    const auto pressed = std::exchange(m_pressed, std::nullopt);
    const QModelIndex index = indexAt(event->pos());
    const auto action = actionAt(event->pos());
    if (pressed && action == pressed->second && m_model.item(index.row()).id == pressed->first)
        Q_EMIT actionTriggered(index, *action);
    hover(event->pos()); // another row may be here now
}

void HistoryListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (actionAt(event->pos()))
        mousePressEvent(event); // quick clicks on a control are single clicks
    else
        toggleExpanded(indexAt(event->pos()));
}

void HistoryListView::mouseMoveEvent(QMouseEvent *event)
{
    QListView::mouseMoveEvent(event);
    hover(event->pos());
}

void HistoryListView::hover(QPoint point)
{
    m_hovered = indexAt(point);
    m_delegate.hoveredAction = actionAt(point);
    viewport()->setCursor(m_delegate.hoveredAction ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

void HistoryListView::endHover()
{
    m_hovered = QModelIndex();
    m_delegate.hoveredAction.reset();
    viewport()->update();
}

void HistoryListView::focusInEvent(QFocusEvent *event)
{
    QListView::focusInEvent(event);
    if (!currentIndex().isValid() && event->reason() != Qt::MouseFocusReason)
        setCurrentIndex(moveCursor(MoveHome, {}));
    viewport()->update();
}

void HistoryListView::focusOutEvent(QFocusEvent *event)
{
    QListView::focusOutEvent(event);
    viewport()->update();
}

bool HistoryListView::viewportEvent(QEvent *anyEvent)
{
    if (anyEvent->type() == QEvent::Leave)
        endHover();
    if (anyEvent->type() != QEvent::ToolTip)
        return QListView::viewportEvent(anyEvent);
    const auto *event = static_cast<QHelpEvent *>(anyEvent);
    const auto action = actionAt(event->pos());
    QToolTip::showText(event->globalPos(), action ? help(indexAt(event->pos()), *action) : QString(), viewport());
    return true;
}

} // namespace lucentra
