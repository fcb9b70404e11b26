#include "HistoryRowLayout.h"

#include "LocalizationManager.h"
#include "Symbol.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr qreal padding = 12;
constexpr qreal spacing = 8;
constexpr qreal cornerRadius = 10;
constexpr qreal buttonHeight = 22;
constexpr qreal buttonInset = 5; ///< left and right of a button's content
constexpr qreal symbolSize = 13;
constexpr qreal starSize = 16;
constexpr qreal symbolGap = 4;
constexpr qreal quietOpacity = 0.48;
constexpr int collapsedLines = 8; ///< of each text

constexpr QColor yellow(0xE5, 0xA5, 0x00);
constexpr QColor gray(0x8E, 0x8E, 0x93);
constexpr QColor green(0x2D, 0xA0, 0x4E);
constexpr QColor redOnLight(0xE0, 0x3B, 0x32);
constexpr QColor redOnDark(0xFF, 0x6B, 0x62);

QFont fontOfSize(int pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QFont smallFont()
{
    return fontOfSize(11);
}

QFont linkFont()
{
    QFont font = fontOfSize(13);
    font.setUnderline(true);
    return font;
}

TextFlow::Shape shapeOf(const QFont &font, qreal width, bool isExpanded)
{
    return {
        .font = font, .width = std::max(40.0, width - 2 * padding), .maxLines = isExpanded ? SHRT_MAX : collapsedLines};
}

QColor withAlpha(QColor color, qreal alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

QString timeText(const HistoryItem &item, const QLocale &locale)
{
    // Qt doesn't support the period of the day in words that Traditional Chinese uses. Without it, hours run to 23.
    return locale.toString(dateOf(item.timestamp), locale.dateTimeFormat(QLocale::ShortFormat).remove(u'B'));
}

} // namespace

HistoryRowLayout::HistoryRowLayout(const HistoryItem &item, qreal width, const HistorySearch &search, bool isExpanded,
                                   const LocalizationManager &texts)
    : m_isStarred(item.isStarred)
    , m_width(width)
    , m_time(timeText(item, QLocale(texts.resolvedLanguageCode())))
    , m_original(item.originalText, shapeOf(fontOfSize(15, QFont::Medium), width, isExpanded), search)
    , m_translation(item.translatedText, shapeOf(fontOfSize(14), width, isExpanded), search)
    , m_originalTop(padding + QFontMetricsF(smallFont()).height() + spacing / 2)
    , m_translationTop(m_originalTop + m_original.height() + spacing)
    , m_buttonsTop(m_translationTop + m_translation.height() + spacing)
    , m_height(m_buttonsTop + buttonHeight + padding - spacing / 2)
{
    placeButtons(texts);
    if (isExpanded || isCutOff())
        placeShowAll(isExpanded, texts);
}

/// Placed in a separate line below the texts.
void HistoryRowLayout::placeShowAll(bool isExpanded, const LocalizationManager &texts)
{
    for (Button &button : m_buttons)
        button.rect.translate(0, buttonHeight);
    m_height += buttonHeight;
    const QString title = texts.localized(isExpanded ? u"收合"_s : u"顯示全部"_s);
    const qreal width = QFontMetricsF(linkFont()).horizontalAdvance(title) + 2 * buttonInset;
    m_buttons.append({.action = RowAction::ShowAll,
                      .title = title,
                      .rect = {padding - buttonInset, m_buttonsTop - spacing / 2, width, buttonHeight}});
}

void HistoryRowLayout::placeButtons(const LocalizationManager &texts)
{
    m_buttons = {
        {.action = RowAction::Star, .help = texts.localized(m_isStarred ? u"取消收藏"_s : u"收藏"_s)},
        {RowAction::CopyOriginal, texts.localized(u"複製原文"_s), texts.localized(u"已複製原文"_s)},
        {RowAction::CopyTranslation, texts.localized(u"複製翻譯"_s), texts.localized(u"已複製翻譯"_s)},
        {RowAction::Delete, texts.localized(u"刪除"_s), {}, texts.localized(u"刪除此筆翻譯"_s)},
    };
    const QFontMetricsF metrics(smallFont());
    qreal x = padding - buttonInset;
    for (Button &button : m_buttons) {
        // Wide enough for both titles, so that the other controls never move.
        const qreal title =
            std::max(metrics.horizontalAdvance(button.title), metrics.horizontalAdvance(button.doneTitle));
        const qreal content = button.title.isEmpty() ? starSize : symbolSize + symbolGap + title;
        button.rect = QRectF(x, m_buttonsTop, content + 2 * buttonInset, buttonHeight);
        x = button.rect.right() + 2;
    }
}

std::optional<RowAction> HistoryRowLayout::actionAt(QPointF point) const
{
    for (const Button &button : m_buttons) {
        if (button.rect.contains(point))
            return button.action;
    }
    return std::nullopt;
}

QString HistoryRowLayout::help(RowAction action) const
{
    for (const Button &button : m_buttons) {
        if (button.action == action)
            return button.help.isEmpty() ? button.title : button.help;
    }
    return {};
}

void HistoryRowLayout::paint(QPainter &painter, QPointF origin, const QPalette &palette, const RowState &state) const
{
    paintCard(painter, origin, palette, state);
    const QColor text = palette.color(QPalette::Text);
    painter.setFont(smallFont());
    painter.setPen(withAlpha(text, 0.55));
    const QFontMetricsF metrics(smallFont());
    painter.drawText(origin + QPointF(padding, padding + metrics.ascent()),
                     metrics.elidedText(m_time, Qt::ElideRight, m_width - 2 * padding));
    const QColor highlight = withAlpha(QColor(0xFF, 0xC8, 0x00), 0.5);
    m_original.draw(painter, origin + QPointF(padding, m_originalTop), text, highlight);
    m_translation.draw(painter, origin + QPointF(padding, m_translationTop), withAlpha(text, 0.8), highlight);
    for (const Button &button : m_buttons)
        paintButton(painter, origin, button, palette, state);
}

void HistoryRowLayout::paintCard(QPainter &painter, QPointF origin, const QPalette &palette,
                                 const RowState &state) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    // The line is drawn inside the card, sharp at whole points.
    const QRectF card = QRectF(origin, QSizeF(m_width, m_height)).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor line = palette.color(QPalette::Text);
    painter.setPen(state.isSelected ? QPen(palette.color(QPalette::Highlight), 1.5)
                                    : QPen(withAlpha(line, line.lightness() > 127 ? 0.12 : 0.05)));
    painter.setBrush(palette.base());
    painter.drawRoundedRect(card, cornerRadius, cornerRadius);
}

void HistoryRowLayout::paintButton(QPainter &painter, QPointF origin, const Button &button, const QPalette &palette,
                                   const RowState &state) const
{
    const bool isDone = (button.action == RowAction::CopyOriginal && state.hasCopiedOriginal) ||
                        (button.action == RowAction::CopyTranslation && state.hasCopiedTranslation);
    const QRectF rect = button.rect.translated(origin);
    if (state.hovered == button.action) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(withAlpha(palette.color(QPalette::Text), 0.08));
        painter.drawRoundedRect(rect, 5, 5);
    }
    if (button.action == RowAction::ShowAll) { // belongs to the text, and is always to be seen
        painter.setFont(linkFont());
        painter.setPen(palette.color(QPalette::Text));
        painter.drawText(rect, Qt::AlignCenter, button.title);
        return;
    }
    QString symbol = isDone ? u"checkmark"_s : u"doc.on.doc"_s;
    QColor color = isDone ? green : palette.color(QPalette::Text);
    qreal size = symbolSize;
    if (button.action == RowAction::Star) {
        symbol = m_isStarred ? u"star-fill"_s : u"star"_s;
        color = m_isStarred ? yellow : gray;
        size = starSize;
    } else if (button.action == RowAction::Delete) {
        symbol = u"trash"_s;
        color = withAlpha(palette.color(QPalette::Text).lightness() > 127 ? redOnDark : redOnLight, 0.8);
    }
    painter.setOpacity(state.isActive || isDone ? 1 : quietOpacity);
    painter.setFont(smallFont());
    const QRectF picture(rect.left() + buttonInset, rect.center().y() - size / 2, size, size);
    paintSymbol(painter, symbol, picture, color);
    painter.setPen(color);
    painter.drawText(rect.adjusted(buttonInset + symbolSize + symbolGap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     isDone ? button.doneTitle : button.title);
    painter.setOpacity(1);
}

} // namespace lucentra
