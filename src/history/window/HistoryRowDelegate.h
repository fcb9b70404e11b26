#pragma once

#include "HistoryRowLayout.h"
#include "Scheduler.h"

#include <QCache>
#include <QHash>
#include <QSet>
#include <QStyledItemDelegate>
#include <QUuid>

#include <map>
#include <memory>
#include <utility>

namespace lucentra {

class HistoryListModel;

/// Draws the rows of a `HistoryListModel` and knows the places of their controls. Rows are laid out on demand. Sizes
/// are in points; a row contains the card and is as wide as the view.
class HistoryRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    HistoryRowDelegate(const HistoryListModel &model, const LocalizationManager &texts, Scheduler &scheduler);

    void setRowWidth(int width);
    /// The size of a row. Its height is an estimate unless `measure` was called.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool isMeasured(const QModelIndex &index) const;
    /// Lays out the row's texts to find its height. Returns whether the height has changed.
    bool measure(const QModelIndex &index);

    /// The control at a point relative to the row's top-left corner.
    std::optional<RowAction> actionAt(const QModelIndex &index, QPoint point) const;
    QString help(const QModelIndex &index, RowAction action) const;

    /// Shows the copy feedback in this row for 1.5 seconds.
    void showCopied(const QUuid &id, RowAction action);
    /// Shows an entry in full, or shortened again. Returns false if it wasn't shortened.
    bool toggleExpanded(const QModelIndex &index);
    /// Drops layouts after a change of fonts, texts, the search or entries.
    void forgetLayouts();
    void forgetLayout(const QUuid &id);

    /// With State_MouseOver or State_HasFocus, the controls are emphasized.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    std::optional<RowAction> hoveredAction; ///< in the row under the pointer

Q_SIGNALS:
    /// Rows must be painted again; their heights are the same.
    void looksChanged();

private:
    const HistoryRowLayout &layoutOf(const QModelIndex &index) const;
    int likelyHeight(const HistoryItem &item) const;

    const HistoryListModel &m_model;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    int m_rowWidth = 0;
    QHash<QUuid, int> m_heights; ///< of measured rows
    mutable QCache<QUuid, HistoryRowLayout> m_layouts;
    QSet<QUuid> m_expanded;
    std::map<std::pair<QUuid, RowAction>, std::unique_ptr<ScheduledTask>> m_copied;
};

} // namespace lucentra
