#include "HistoryRowDelegate.h"

#include "HistoryListModel.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int sideMargin = 14; ///< left of a card; the scroll bar is right of it
constexpr int verticalMargin = 4;
constexpr auto feedbackDuration = 1500ms;
constexpr int cachedLayouts = 100; ///< more than are ever visible

} // namespace

HistoryRowDelegate::HistoryRowDelegate(const HistoryListModel &model, const LocalizationManager &texts,
                                       Scheduler &scheduler, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_model(model)
    , m_texts(texts)
    , m_scheduler(scheduler)
    , m_layouts(cachedLayouts)
{
}

const HistoryRowLayout &HistoryRowDelegate::layoutOf(const QModelIndex &index, int rowWidth) const
{
    const HistoryItem &item = m_model.item(index.row());
    const std::pair key(item.id, rowWidth);
    if (!m_layouts.contains(key))
        m_layouts.insert(key, new HistoryRowLayout(item, rowWidth - sideMargin, m_model.search(),
                                                   m_expanded.contains(item.id), m_texts));
    return *m_layouts[key];
}

int HistoryRowDelegate::height(const QModelIndex &index, int rowWidth) const
{
    return int(std::ceil(layoutOf(index, rowWidth).height())) + 2 * verticalMargin;
}

int HistoryRowDelegate::likelyHeight(const QModelIndex &index, int rowWidth) const
{
    // For Latin text. The view corrects a wrong estimate when the row becomes visible.
    constexpr int characterWidth = 8;
    constexpr int lineHeight = 18;
    constexpr int besidesTexts = 86;
    constexpr qsizetype mostLines = 8;
    const HistoryItem &item = m_model.item(index.row());
    const qsizetype charactersPerLine = std::max(1, (rowWidth - 40) / characterWidth);
    const auto lines = [&](const QString &text) { return std::min(mostLines, 1 + text.size() / charactersPerLine); };
    return besidesTexts + lineHeight * int(lines(item.originalText) + lines(item.translatedText));
}

std::optional<RowAction> HistoryRowDelegate::actionAt(const QModelIndex &index, int rowWidth, QPoint point) const
{
    return layoutOf(index, rowWidth).actionAt(point - QPointF(sideMargin, verticalMargin));
}

QString HistoryRowDelegate::help(const QModelIndex &index, int rowWidth, RowAction action) const
{
    return layoutOf(index, rowWidth).help(action);
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

bool HistoryRowDelegate::toggleExpanded(const QModelIndex &index, int rowWidth)
{
    const QUuid id = m_model.item(index.row()).id;
    if (!m_expanded.remove(id)) {
        if (!layoutOf(index, rowWidth).isCutOff())
            return false;
        m_expanded.insert(id);
    }
    forgetLayout(id);
    return true;
}

void HistoryRowDelegate::forgetLayouts()
{
    m_layouts.clear();
}

void HistoryRowDelegate::forgetLayout(const QUuid &id)
{
    const auto keys = m_layouts.keys();
    for (const auto &key : keys) {
        if (key.first == id)
            m_layouts.remove(key);
    }
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
    layoutOf(index, option.rect.width())
        .paint(*painter, option.rect.topLeft() + QPointF(sideMargin, verticalMargin), option.palette, state);
    painter->restore();
}

} // namespace lucentra
