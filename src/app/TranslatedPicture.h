#pragma once

#include "OverlayPicture.h"
#include "TextBlock.h"

#include <QImage>
#include <QJsonArray>

namespace lucentra {

/// A picture's lines laid out on a pane. The picture is treated as the area beneath a pane that is 4 points wider and
/// higher, without window buttons, at scale 1.
class TranslatedPicture
{
public:
    TranslatedPicture(const QSize &pictureSize, const QList<TextBlock> &blocks, const QStringList &translations,
                      const QString &targetLanguage, const OverlayFontSettings &fontSettings);

    /// Draws the pane's glass and the overlays over the picture.
    void paintOver(QImage &picture, double glassOpacity);

    /// All lines in the order of recognition, also those without an overlay.
    const QJsonArray &toJson() const { return m_json; }

private:
    const GlassTone m_tone;
    OverlayPicture m_overlays;
    QJsonArray m_json;
};

} // namespace lucentra
