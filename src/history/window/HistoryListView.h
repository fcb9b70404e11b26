#pragma once

#include "HistoryRowLayout.h"
#include "Scheduler.h"

#include <QCache>
#include <QHash>
#include <QListView>
#include <QPersistentModelIndex>
#include <QSet>
#include <QUuid>

#include <map>
#include <memory>
#include <utility>

namespace lucentra {

class HistoryListModel;

/// The entries as cards, one per row, of different heights. Only the texts of visible rows are laid out; the heights of
/// the others are estimated. The visible rows keep their place when an estimate turns out wrong.
class HistoryListView : public QListView
{
    Q_OBJECT

public:
    HistoryListView(HistoryListModel &model, const LocalizationManager &texts, Scheduler &scheduler);

    /// Lays out all rows again after a change of texts, fonts or the search.
    void relayout();
    /// Shows an entry in full, or only its first lines again.
    void toggleExpanded(const QModelIndex &index);
    /// Shows the copy feedback in an entry's row for 1.5 seconds.
    void showCopied(const QUuid &id, RowAction action);
    /// The tool tip of an entry's control; empty if the entry has no such control.
    QString help(const QModelIndex &index, RowAction action) const { return layoutOf(index).help(action); }

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
    QUuid idOf(const QModelIndex &index) const;
    const HistoryRowLayout &layoutOf(const QModelIndex &index) const;
    int likelyHeight(const QModelIndex &index) const;
    bool measure(const QModelIndex &index);
    void forgetLayouts();
    void layOutAround(const QPersistentModelIndex &row, int top);
    void measureVisible();
    std::optional<RowAction> actionAt(QPoint point) const;
    void hover(QPoint point);
    void endHover();

    HistoryListModel &m_model;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    int m_rowWidth = 0;
    QHash<QUuid, int> m_heights; ///< of measured rows
    mutable QCache<QUuid, HistoryRowLayout> m_layouts;
    QSet<QUuid> m_expanded;
    std::map<std::pair<QUuid, RowAction>, std::unique_ptr<ScheduledTask>> m_copied;
    QPersistentModelIndex m_anchor; ///< a visible row that stays where it is
    int m_anchorTop = 0;            ///< its place in the viewport
    bool m_isArranging = false;
    QPersistentModelIndex m_hovered;
    std::optional<RowAction> m_hoveredAction; ///< in the row under the pointer
    std::optional<std::pair<QUuid, RowAction>> m_pressed;
};

} // namespace lucentra
