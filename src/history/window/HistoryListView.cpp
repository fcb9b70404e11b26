#include "HistoryListView.h"

#include "HistoryListModel.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

// Points
constexpr int sideMargin = 14; ///< left of a card; the scroll bar is right of it
constexpr int verticalMargin = 4;
constexpr int wheelStep = 40;
constexpr int mostAttempts = 8;
constexpr auto feedbackDuration = 1500ms;
constexpr int cachedLayouts = 100; ///< more than are ever visible

/// Tells the toolkit, which asks a delegate, how high the rows are. The view paints them itself.
class RowSizes : public QStyledItemDelegate
{
public:
    RowSizes(std::function<QSize(const QModelIndex &)> sizeOf, QObject *parent)
        : QStyledItemDelegate(parent)
        , m_sizeOf(std::move(sizeOf))
    {
    }
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override { return m_sizeOf(index); }

private:
    const std::function<QSize(const QModelIndex &)> m_sizeOf;
};

} // namespace

HistoryListView::HistoryListView(HistoryListModel &model, const LocalizationManager &texts, Scheduler &scheduler)
    : m_model(model)
    , m_texts(texts)
    , m_scheduler(scheduler)
    , m_layouts(cachedLayouts)
{
    setModel(&model);
    const auto sizeOf = [this](const QModelIndex &index) {
        return QSize(m_rowWidth, m_heights.value(idOf(index), likelyHeight(index)));
    };
    setItemDelegate(new RowSizes(sizeOf, this));
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setBackgroundRole(QPalette::Window);
    viewport()->setBackgroundRole(QPalette::Window);
    verticalScrollBar()->setSingleStep(wheelStep);
    connect(&model, &QAbstractItemModel::modelReset, this, [this] { verticalScrollBar()->setValue(0); });
}

QUuid HistoryListView::idOf(const QModelIndex &index) const
{
    return m_model.item(index.row()).id;
}

const HistoryRowLayout &HistoryListView::layoutOf(const QModelIndex &index) const
{
    const HistoryItem &item = m_model.item(index.row());
    if (!m_layouts.contains(item.id))
        m_layouts.insert(item.id, new HistoryRowLayout(item, m_rowWidth - sideMargin, m_model.search(),
                                                       m_expanded.contains(item.id), m_texts));
    return *m_layouts[item.id];
}

/// For Latin text. A wrong estimate is corrected when the row becomes visible.
int HistoryListView::likelyHeight(const QModelIndex &index) const
{
    constexpr int characterWidth = 8;
    constexpr int lineHeight = 18;
    constexpr int besidesTexts = 86;
    constexpr qsizetype mostLines = 8;
    const qsizetype charactersPerLine = std::max(1, (m_rowWidth - 40) / characterWidth);
    const auto lines = [&](const QString &text) { return std::min(mostLines, 1 + text.size() / charactersPerLine); };
    const HistoryItem &item = m_model.item(index.row());
    return besidesTexts + lineHeight * int(lines(item.originalText) + lines(item.translatedText));
}

/// Lays out the row's texts to find its height. Returns whether the height has changed.
bool HistoryListView::measure(const QModelIndex &index)
{
    if (m_heights.contains(idOf(index)))
        return false;
    const int height = int(std::ceil(layoutOf(index).height())) + 2 * verticalMargin;
    m_heights.insert(idOf(index), height);
    return height != likelyHeight(index);
}

void HistoryListView::forgetLayouts()
{
    m_layouts.clear();
    m_heights.clear();
}

void HistoryListView::relayout()
{
    forgetLayouts();
    doItemsLayout();
}

void HistoryListView::toggleExpanded(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const QUuid id = idOf(index);
    if (!m_expanded.remove(id)) {
        if (!layoutOf(index).isCutOff())
            return;
        m_expanded.insert(id);
    }
    m_layouts.remove(id);
    m_heights.remove(id);
    doItemsLayout();
}

void HistoryListView::showCopied(const QUuid &id, RowAction action)
{
    const std::pair key(id, action);
    m_copied[key] = m_scheduler.after(feedbackDuration, [this, key] {
        m_copied.erase(key);
        viewport()->update();
    });
    viewport()->update();
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
            if (!known.isValid() && m_heights.contains(idOf(index)))
                known = index;
            isChanged = measure(index) || isChanged;
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
    const int width = maximumViewportSize().width() - verticalScrollBar()->sizeHint().width();
    if (std::exchange(m_rowWidth, width) != width)
        forgetLayouts();
    QListView::resizeEvent(event);
    doItemsLayout();
}

void HistoryListView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    // Rows that come into sight on the way turn out higher or lower and push this one away again, each just once.
    for (int attempt = 0, before = -1; index.isValid() && attempt < mostAttempts; ++attempt) {
        if (measure(index))
            doItemsLayout();
        QListView::scrollTo(index, hint);
        if (std::exchange(before, verticalScrollBar()->value()) == verticalScrollBar()->value())
            break;
    }
}

void HistoryListView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
        m_layouts.remove(m_model.item(row).id);
    QListView::dataChanged(topLeft, bottomRight, roles);
}

void HistoryListView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect exposed = event->rect();
    for (QModelIndex index = indexAt(exposed.topLeft()); index.isValid(); index = index.siblingAtRow(index.row() + 1)) {
        const QRect row = visualRect(index);
        if (row.top() > exposed.bottom())
            break;
        const QUuid id = idOf(index);
        const bool isHovered = index == m_hovered;
        const bool isCurrent = hasFocus() && index == currentIndex();
        const RowState state{.isActive = isHovered || isCurrent,
                             .isSelected = isCurrent,
                             .hovered = isHovered ? m_hoveredAction : std::nullopt,
                             .hasCopiedOriginal = m_copied.contains({id, RowAction::CopyOriginal}),
                             .hasCopiedTranslation = m_copied.contains({id, RowAction::CopyTranslation})};
        painter.save();
        layoutOf(index).paint(painter, row.topLeft() + QPointF(sideMargin, verticalMargin), palette(), state);
        painter.restore();
    }
}

std::optional<RowAction> HistoryListView::actionAt(QPoint point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return std::nullopt;
    return layoutOf(index).actionAt(point - visualRect(index).topLeft() - QPointF(sideMargin, verticalMargin));
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
    m_hoveredAction = actionAt(point);
    viewport()->setCursor(m_hoveredAction ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

void HistoryListView::endHover()
{
    m_hovered = QModelIndex();
    m_hoveredAction.reset();
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
