#include "TranslatedPicture.h"

#include "FrostedBackdrop.h"
#include "GlassAreaCapture.h"

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
    : m_tone(fontSettings.ground)
{
    const QSizeF paneSize = QSizeF(pictureSize) + QSizeF(2 * captureInset, 2 * captureInset);
    m_overlays.setOverlays(placeOverlays(blocks, translations, paneSize, {}).candidates,
                           {.paneSize = paneSize, .targetLanguage = targetLanguage, .font = fontSettings});
    auto overlay = m_overlays.overlays().cbegin(); // blocks without text have none
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const QString translation = textForBlock(blocks, translations, i);
        const auto *painter = translation.isEmpty() || !overlay->painter ? nullptr : &*overlay->painter;
        overlay += translation.isEmpty() ? 0 : 1;
        m_json.append(QJsonObject{{u"text"_s, blocks[i].text},
                                  {u"translation"_s, translation},
                                  {u"rect"_s, toArray(paneRect(blocks[i].normBox, paneSize))},
                                  {u"frame"_s, painter ? QJsonValue(toArray(painter->layout().frame)) : QJsonValue()},
                                  {u"fontSize"_s, painter ? QJsonValue(painter->layout().fontSize) : QJsonValue()},
                                  {u"lines"_s, painter ? QJsonValue(painter->layout().lines) : QJsonValue()}});
    }
}

void TranslatedPicture::paintOver(QImage &picture, double glassOpacity)
{
    const FrostedBackdrop glass(picture, 1, m_tone);
    QList<CalmArea> calmAreas = m_overlays.calmAreas();
    for (CalmArea &area : calmAreas)
        area.rect.translate(-captureInset, -captureInset);
    const QRect whole = picture.rect();
    QPainter painter(&picture);
    paintGlass(painter, glass, whole, glassOpacity);
    paintCalmGlass(painter, glass, whole, calmMask(whole.size(), calmAreas, areCalmAreasSeen(glassOpacity)),
                   calmBounds(calmAreas), glassOpacity);
    painter.translate(-captureInset, -captureInset);
    constexpr int inset = int(captureInset);
    m_overlays.paint(painter, whole.adjusted(-inset, -inset, 3 * inset, 3 * inset));
}

} // namespace lucentra
