#include "HistoryRowDelegate.h"

#include "HistoryListModel.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int sideMargin = 14; ///< left of a card; the scroll bar is right of it
constexpr int verticalMargin = 4;
constexpr auto feedbackDuration = 1500ms;
constexpr int cachedLayouts = 100; ///< more than are ever visible

} // namespace

HistoryRowDelegate::HistoryRowDelegate(const HistoryListModel &model, const LocalizationManager &texts,
                                       Scheduler &scheduler)
    : m_model(model)
    , m_texts(texts)
    , m_scheduler(scheduler)
    , m_layouts(cachedLayouts)
{
}

const HistoryRowLayout &HistoryRowDelegate::layoutOf(const QModelIndex &index) const
{
    const HistoryItem &item = m_model.item(index.row());
    if (!m_layouts.contains(item.id))
        m_layouts.insert(item.id, new HistoryRowLayout(item, m_rowWidth - sideMargin, m_model.search(),
                                                       m_expanded.contains(item.id), m_texts));
    return *m_layouts[item.id];
}

void HistoryRowDelegate::setRowWidth(int width)
{
    if (std::exchange(m_rowWidth, width) != width)
        forgetLayouts();
}

QSize HistoryRowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const HistoryItem &item = m_model.item(index.row());
    const auto measured = m_heights.constFind(item.id);
    return {m_rowWidth, measured == m_heights.cend() ? likelyHeight(item) : *measured};
}

bool HistoryRowDelegate::isMeasured(const QModelIndex &index) const
{
    return m_heights.contains(m_model.item(index.row()).id);
}

bool HistoryRowDelegate::measure(const QModelIndex &index)
{
    if (isMeasured(index))
        return false;
    const int height = int(std::ceil(layoutOf(index).height())) + 2 * verticalMargin;
    const HistoryItem &item = m_model.item(index.row());
    m_heights.insert(item.id, height);
    return height != likelyHeight(item);
}

/// For Latin text. The view corrects a wrong estimate when the row becomes visible.
int HistoryRowDelegate::likelyHeight(const HistoryItem &item) const
{
    constexpr int characterWidth = 8;
    constexpr int lineHeight = 18;
    constexpr int besidesTexts = 86;
    constexpr qsizetype mostLines = 8;
    const qsizetype charactersPerLine = std::max(1, (m_rowWidth - 40) / characterWidth);
    const auto lines = [&](const QString &text) { return std::min(mostLines, 1 + text.size() / charactersPerLine); };
    return besidesTexts + lineHeight * int(lines(item.originalText) + lines(item.translatedText));
}

std::optional<RowAction> HistoryRowDelegate::actionAt(const QModelIndex &index, QPoint point) const
{
    return layoutOf(index).actionAt(point - QPointF(sideMargin, verticalMargin));
}

QString HistoryRowDelegate::help(const QModelIndex &index, RowAction action) const
{
    return layoutOf(index).help(action);
}

void HistoryRowDelegate::showCopied(const QUuid &id, RowAction action)
{
    const std::pair key(id, action);
    m_copied[key] = m_scheduler.after(feedbackDuration, [this, key] {
        m_copied.erase(key);
        Q_EMIT looksChanged();
    });
    Q_EMIT looksChanged();
}

bool HistoryRowDelegate::toggleExpanded(const QModelIndex &index)
{
    const QUuid id = m_model.item(index.row()).id;
    if (!m_expanded.remove(id)) {
        if (!layoutOf(index).isCutOff())
            return false;
        m_expanded.insert(id);
    }
    forgetLayout(id);
    m_heights.remove(id);
    return true;
}

void HistoryRowDelegate::forgetLayouts()
{
    m_layouts.clear();
    m_heights.clear();
}

void HistoryRowDelegate::forgetLayout(const QUuid &id)
{
    m_layouts.remove(id);
}

void HistoryRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QUuid id = m_model.item(index.row()).id;
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
    const RowState state{.isActive = isHovered || option.state.testFlag(QStyle::State_HasFocus),
                         .isSelected = option.state.testFlag(QStyle::State_HasFocus),
                         .hovered = isHovered ? hoveredAction : std::nullopt,
                         .hasCopiedOriginal = m_copied.contains({id, RowAction::CopyOriginal}),
                         .hasCopiedTranslation = m_copied.contains({id, RowAction::CopyTranslation})};
    painter->save();
    layoutOf(index).paint(*painter, option.rect.topLeft() + QPointF(sideMargin, verticalMargin), option.palette, state);
    painter->restore();
}

} // namespace lucentra
