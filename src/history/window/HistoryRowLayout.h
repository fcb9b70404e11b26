#pragma once

#include "HistoryItem.h"
#include "TextFlow.h"

#include <QList>
#include <QPalette>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

namespace lucentra {

class LocalizationManager;

/// What can be done with an entry.
enum class RowAction { Star, CopyOriginal, CopyTranslation, Delete, ShowAll };

/// The state of an entry's row.
struct RowState
{
    bool isActive = false; ///< its controls are emphasized
    bool isSelected = false;
    std::optional<RowAction> hovered; ///< the control under the pointer
    bool hasCopiedOriginal = false;   ///< shows the feedback instead of the action
    bool hasCopiedTranslation = false;
};

/// One entry as a card: its time, its texts, and a row of controls. Coordinates are points relative to the card's
/// top-left corner.
class HistoryRowLayout
{
public:
    HistoryRowLayout(const HistoryItem &item, qreal width, const HistorySearch &search, bool isExpanded,
                     const LocalizationManager &texts);

    qreal height() const { return m_height; }
    /// Whether a text is shortened, so that the entry can be expanded.
    bool isCutOff() const { return m_original.isCutOff() || m_translation.isCutOff(); }

    std::optional<RowAction> actionAt(QPointF point) const;
    /// The tool tip of a control; empty if the entry has no such control.
    QString help(RowAction action) const;

    void paint(QPainter &painter, QPointF origin, const QPalette &palette, const RowState &state) const;

private:
    struct Button
    {
        RowAction action;
        QString title;     ///< empty if there is only a symbol
        QString doneTitle; ///< for a while after the action
        QString help;      ///< empty if the title says it
        QRectF rect;
    };

    void placeButtons(const LocalizationManager &texts);
    void placeShowAll(bool isExpanded, const LocalizationManager &texts);
    void paintCard(QPainter &painter, QPointF origin, const QPalette &palette, const RowState &state) const;
    void paintButton(QPainter &painter, QPointF origin, const Button &button, const QPalette &palette,
                     const RowState &state) const;

    const bool m_isStarred;
    const qreal m_width;
    const QString m_time;
    TextFlow m_original;
    TextFlow m_translation;
    qreal m_originalTop;
    qreal m_translationTop;
    qreal m_buttonsTop;
    qreal m_height;
    QList<Button> m_buttons;
};

} // namespace lucentra
