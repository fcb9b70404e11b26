#include "TranslatedPicture.h"

#include "CalmGlass.h"
#include "FrostedBackdrop.h"
#include "GlassAreaCapture.h"
#include "OverlayPainter.h"
#include "OverlayPlacement.h"
#include "OverlayTypesetter.h"

#include <QJsonObject>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QJsonArray toArray(const QRectF &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

} // namespace

TranslatedPicture::TranslatedPicture(const QSize &pictureSize, const QList<TextBlock> &blocks,
                                     const QStringList &translations, const QString &targetLanguage,
                                     const OverlayFontSettings &fontSettings)
{
    const QSizeF paneSize = QSizeF(pictureSize) + QSizeF(2 * captureInset, 2 * captureInset);
    const auto candidates = placeOverlays(blocks, translations, paneSize, {}).candidates;
    const QList<OverlayLimits> limits = overlayLimits(candidates, paneSize.height());
    OverlayTypesetter typesetter(targetLanguage);
    qsizetype next = 0; // of the candidates, which leave out the blocks without text
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        TranslatedLine line{.text = blocks[i].text,
                            .translation = textForBlock(blocks, translations, i),
                            .rect = paneRect(blocks[i].normBox, paneSize)};
        if (!line.translation.isEmpty()) {
            line.layout = layOutOverlay(typesetter, line.translation, limits[next], candidates[next].rect,
                                        QRectF(QPointF(), paneSize), fontSettings);
            ++next;
            if (line.layout)
                line.shaped = typesetter.typeset(line.translation);
        }
        m_lines.push_back(std::move(line));
    }
}

void TranslatedPicture::paintOver(QImage &picture, double glassOpacity) const
{
    const FrostedBackdrop glass(picture);
    QList<CalmArea> calmAreas;
    for (const TranslatedLine &line : m_lines) {
        if (line.layout)
            calmAreas.append({.rect = line.layout->frame.translated(-captureInset, -captureInset)});
    }
    const QRectF whole = picture.rect();
    QPainter painter(&picture);
    glass.paint(painter, whole, glassOpacity);
    painter.setOpacity(glassOpacity);
    paintSheen(painter, whole);
    painter.setOpacity(1);
    paintCalmGlass(painter, glass, whole, calmMask(whole.size(), 1, calmAreas, areCalmAreasSeen(glassOpacity)),
                   glassOpacity);
    painter.translate(-captureInset, -captureInset);
    for (const TranslatedLine &line : m_lines) {
        if (line.layout)
            OverlayPainter(line.shaped, *line.layout).paint(painter);
    }
}

QJsonArray TranslatedPicture::toJson() const
{
    QJsonArray blocks;
    for (const TranslatedLine &line : m_lines) {
        const auto &layout = line.layout;
        blocks.append(QJsonObject{{u"text"_s, line.text},
                                  {u"translation"_s, line.translation},
                                  {u"rect"_s, toArray(line.rect)},
                                  {u"frame"_s, layout ? QJsonValue(toArray(layout->frame)) : QJsonValue()},
                                  {u"fontSize"_s, layout ? QJsonValue(layout->fontSize) : QJsonValue()},
                                  {u"lines"_s, layout ? QJsonValue(layout->lines) : QJsonValue()}});
    }
    return blocks;
}

} // namespace lucentra
