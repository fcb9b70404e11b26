#pragma once

#include "HistoryRowLayout.h"

#include <QListView>
#include <QPersistentModelIndex>
#include <QUuid>

#include <utility>

namespace lucentra {

class HistoryListModel;
class HistoryRowDelegate;

/// A list with rows of different heights. Only the texts of visible rows are laid out; the heights of the others are
/// estimated. The visible rows keep their place when an estimate turns out wrong.
class HistoryListView : public QListView
{
    Q_OBJECT

public:
    HistoryListView(HistoryListModel &model, HistoryRowDelegate &delegate);

    /// Lays out all rows again after a change of texts or fonts.
    void relayout();
    /// Shows an entry in full, or only its first lines again.
    void toggleExpanded(const QModelIndex &index);
    /// The tool tip of an entry's control; empty if the entry has no such control.
    QString help(const QModelIndex &index, RowAction action) const;

    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

Q_SIGNALS:
    /// A control of a row was pressed.
    void actionTriggered(const QModelIndex &index, lucentra::RowAction action);

protected:
    void scrollContentsBy(int dx, int dy) override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void layOutAround(const QPersistentModelIndex &row, int top);
    void measureVisible();
    std::optional<RowAction> actionAt(QPoint point) const;
    void hover(QPoint point);
    void endHover();

    HistoryListModel &m_model;
    HistoryRowDelegate &m_delegate;
    QPersistentModelIndex m_anchor; ///< a visible row that stays where it is
    int m_anchorTop = 0;            ///< its place in the viewport
    bool m_isArranging = false;
    QPersistentModelIndex m_hovered;
    std::optional<std::pair<QUuid, RowAction>> m_pressed;
};

} // namespace lucentra
