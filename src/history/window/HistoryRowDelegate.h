#pragma once

#include "HistoryRowLayout.h"
#include "Scheduler.h"

#include <QCache>
#include <QSet>
#include <QStyledItemDelegate>
#include <QUuid>

#include <map>
#include <memory>
#include <utility>

namespace lucentra {

class HistoryListModel;

/// Draws the rows of a `HistoryListModel` and knows where their controls lie. Only rows that are asked for cost
/// anything. Sizes are points; a row is as wide as its view says and has the card within. Main thread only.
class HistoryRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// All must outlive the delegate.
    HistoryRowDelegate(const HistoryListModel &model, const LocalizationManager &texts, Scheduler &scheduler,
                       QObject *parent = nullptr);

    /// The exact height, which lays the row's texts out.
    int height(const QModelIndex &index, int rowWidth) const;
    /// About that height, at no cost.
    int likelyHeight(const QModelIndex &index, int rowWidth) const;

    /// The control at a point of the row; the row's top-left corner is the origin.
    std::optional<RowAction> actionAt(const QModelIndex &index, int rowWidth, QPoint point) const;
    QString help(const QModelIndex &index, int rowWidth, RowAction action) const;

    /// Tells for 1.5 seconds, in this row alone, that a text was copied.
    void showCopied(const QUuid &id, RowAction action);
    /// Shows all of an entry's texts, or no longer; false where nothing of it was left out.
    bool toggleExpanded(const QModelIndex &index, int rowWidth);
    /// Fonts, texts, the search or entries are others now.
    void forgetLayouts();
    void forgetLayout(const QUuid &id);

    /// The row's state is the option's: State_MouseOver and State_HasFocus make the controls stand out.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    std::optional<RowAction> hoveredAction; ///< in the row under the pointer

Q_SIGNALS:
    /// Rows look another way, but are as high as before.
    void looksChanged();

private:
    const HistoryRowLayout &layoutOf(const QModelIndex &index, int rowWidth) const;

    const HistoryListModel &m_model;
    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    mutable QCache<std::pair<QUuid, int>, HistoryRowLayout> m_layouts; ///< by entry and width
    QSet<QUuid> m_expanded;
    std::map<std::pair<QUuid, RowAction>, std::unique_ptr<ScheduledTask>> m_copied;
};

} // namespace lucentra
