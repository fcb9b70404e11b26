#include "HistoryListView.h"

#include "HistoryListModel.h"
#include "HistoryRowDelegate.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace lucentra {

namespace {

constexpr int wheelStep = 40; ///< points
constexpr int mostAttempts = 8;

} // namespace

HistoryListView::HistoryListView(HistoryListModel &model, HistoryRowDelegate &delegate, QWidget *parent)
    : QListView(parent)
    , m_model(model)
    , m_delegate(delegate)
    , m_tops{0}
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
    m_measuredHeights.clear();
    m_delegate.forgetLayouts();
    doItemsLayout();
}

void HistoryListView::toggleExpanded(const QModelIndex &index)
{
    if (!index.isValid() || !m_delegate.toggleExpanded(index, rowWidth()))
        return;
    m_measuredHeights.remove(m_model.item(index.row()).id);
    doItemsLayout();
}

QString HistoryListView::help(const QModelIndex &index, RowAction action) const
{
    return m_delegate.help(index, rowWidth(), action);
}

/// Always without the place of the scroll bar, so that the width doesn't depend on the number of rows.
int HistoryListView::rowWidth() const
{
    return maximumViewportSize().width() - verticalScrollBar()->sizeHint().width();
}

int HistoryListView::rowAt(int y) const
{
    const auto after = std::upper_bound(m_tops.cbegin(), m_tops.cend(), y);
    return int(after - m_tops.cbegin()) - 1;
}

void HistoryListView::readRows()
{
    const int width = rowWidth();
    if (std::exchange(m_measuredWidth, width) != width)
        m_measuredHeights.clear();
    m_rows.clear();
    m_rows.reserve(size_t(m_model.items().size()));
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const auto measured = m_measuredHeights.constFind(m_model.item(row).id);
        const bool isMeasured = measured != m_measuredHeights.cend();
        m_rows.push_back({isMeasured ? *measured : m_delegate.likelyHeight(m_model.index(row), width), isMeasured});
    }
    sumUp();
}

void HistoryListView::sumUp()
{
    m_tops.resize(m_rows.size() + 1);
    m_tops[0] = 0;
    for (size_t row = 0; row < m_rows.size(); ++row)
        m_tops[row + 1] = m_tops[row] + m_rows[row].height;
}

/// Measures the row. Returns whether its height differs from the estimate.
bool HistoryListView::measure(int row)
{
    Row &measured = m_rows[size_t(row)];
    if (std::exchange(measured.isMeasured, true))
        return false;
    const int height = m_delegate.height(m_model.index(row), rowWidth());
    m_measuredHeights.insert(m_model.item(row).id, height);
    return std::exchange(measured.height, height) != height;
}

void HistoryListView::measureVisible()
{
    if (m_isArranging || m_rows.size() != size_t(m_model.rowCount()))
        return;
    const QScopedValueRollback arranging(m_isArranging, true);
    QScrollBar &bar = *verticalScrollBar();
    const int first = rowAt(bar.value());
    int shift = 0;
    bool isChanged = false;
    int bottom = m_tops[size_t(std::clamp(first, 0, int(m_rows.size())))];
    for (int row = std::max(0, first); row < int(m_rows.size()) && bottom < bar.value() + viewport()->height(); ++row) {
        const int before = m_rows[size_t(row)].height;
        if (measure(row)) {
            isChanged = true;
            // A row that appears at the top grows upwards.
            if (row == first && m_tops[size_t(row)] < bar.value())
                shift = m_rows[size_t(row)].height - before;
        }
        bottom += m_rows[size_t(row)].height;
    }
    if (isChanged)
        sumUp();
    bar.setPageStep(viewport()->height());
    bar.setRange(0, std::max(0, m_tops.back() - viewport()->height()));
    if (shift != 0)
        bar.setValue(bar.value() + shift);
    keepAnchor();
}

void HistoryListView::keepAnchor()
{
    const int value = verticalScrollBar()->value();
    const int row = rowAt(value);
    m_anchor = row >= 0 && row < int(m_rows.size()) ? m_model.index(row) : QModelIndex();
    m_anchorOffset = m_anchor.isValid() ? value - m_tops[size_t(row)] : 0;
}

/// Restores the scroll position after changes of the rows above. At the top, new rows become visible instead.
void HistoryListView::placeAtAnchor()
{
    QScrollBar &bar = *verticalScrollBar();
    if (!m_anchor.isValid() || bar.value() == 0 || m_anchor.row() >= int(m_rows.size()))
        return;
    const QScopedValueRollback arranging(m_isArranging, true);
    bar.setRange(0, std::max(0, m_tops.back() - viewport()->height()));
    bar.setValue(m_tops[size_t(m_anchor.row())] + m_anchorOffset);
}

// These replace the layout of QListView, so they call its base class.
// NOLINTBEGIN(bugprone-parent-virtual-call)
void HistoryListView::doItemsLayout()
{
    readRows();
    placeAtAnchor();
    QAbstractItemView::doItemsLayout();
}

void HistoryListView::updateGeometries()
{
    measureVisible();
    QAbstractItemView::updateGeometries();
}

void HistoryListView::scrollContentsBy(int, int)
{
    measureVisible();
    viewport()->update();
}

void HistoryListView::resizeEvent(QResizeEvent *event)
{
    if (rowWidth() != m_measuredWidth) {
        readRows();
        placeAtAnchor();
    }
    QAbstractItemView::resizeEvent(event);
}
// NOLINTEND(bugprone-parent-virtual-call)

QRect HistoryListView::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= int(m_rows.size()))
        return {};
    const auto row = size_t(index.row());
    return {0, m_tops[row] - verticalOffset(), rowWidth(), m_rows[row].height};
}

QModelIndex HistoryListView::indexAt(const QPoint &point) const
{
    const int row = rowAt(point.y() + verticalOffset());
    return row >= 0 && row < int(m_rows.size()) ? m_model.index(row) : QModelIndex();
}

int HistoryListView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

void HistoryListView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid())
        return;
    executeDelayedItemsLayout();
    if (index.row() >= int(m_rows.size()))
        return;
    QScrollBar &bar = *verticalScrollBar();
    // Rows that come into sight on the way turn out higher or lower and push this one away again, each just once.
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (measure(index.row())) {
            sumUp();
            measureVisible();
        }
        const int top = m_tops[size_t(index.row())];
        const int bottom = m_tops[size_t(index.row()) + 1];
        const int before = bar.value();
        if (hint == PositionAtTop || top < bar.value())
            bar.setValue(top);
        else if (bottom > bar.value() + viewport()->height())
            bar.setValue(std::min(top, bottom - viewport()->height()));
        if (bar.value() == before)
            break;
    }
}

QModelIndex HistoryListView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers)
{
    const int last = m_model.rowCount() - 1;
    if (last < 0)
        return {};
    if (!currentIndex().isValid())
        return m_model.index(std::clamp(rowAt(verticalOffset()), 0, last));
    const int current = currentIndex().row();
    const auto page = [&](int distance) { return rowAt(m_tops[size_t(current)] + distance); };
    int row = current;
    switch (cursorAction) {
    case MoveUp:
    case MovePrevious:
        row = current - 1;
        break;
    case MoveDown:
    case MoveNext:
        row = current + 1;
        break;
    case MovePageUp:
        row = std::min(current - 1, page(-viewport()->height()));
        break;
    case MovePageDown:
        row = std::max(current + 1, page(viewport()->height()));
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = last;
        break;
    case MoveLeft:
    case MoveRight:
        break;
    }
    return m_model.index(std::clamp(row, 0, last));
}

void HistoryListView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex index = indexAt(rect.center());
    selectionModel()->select(QItemSelection(index, index), command);
}

QRegion HistoryListView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const QModelIndexList indexes = selection.indexes();
    for (const QModelIndex &index : indexes)
        region += visualRect(index);
    return region;
}

void HistoryListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        m_delegate.forgetLayout(m_model.item(row).id);
    QListView::dataChanged(topLeft, bottomRight, roles);
}

void HistoryListView::paintEvent(QPaintEvent *event)
{
    if (m_rows.size() != size_t(m_model.rowCount()))
        return; // rows have come or gone; the layout that is on its way paints once more
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QRect exposed = event->rect();
    for (int row = std::max(0, rowAt(exposed.top() + verticalOffset())); row < int(m_rows.size()); ++row) {
        const QModelIndex index = m_model.index(row);
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
    return m_delegate.actionAt(index, rowWidth(), point - visualRect(index).topLeft());
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
