#pragma once

#include "OverlayLayout.h"
#include "OverlayText.h"
#include "TextBlock.h"

#include <QImage>
#include <QJsonArray>
#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace lucentra {

/// One recognized line with its translation, as the pane would place it.
struct TranslatedLine
{
    QString text;
    QString translation;                 ///< the source text where none came back
    QRectF rect;                         ///< where the source lies, in pane points
    std::optional<OverlayLayout> layout; ///< nothing where it gets no overlay
    std::shared_ptr<OverlayText> shaped; ///< set where `layout` is
};

/// A picture's lines laid out on the pane that the picture stands in for: the picture is what lies beneath a pane 4
/// points wider and higher, without window buttons, at scale 1.
class TranslatedPicture
{
public:
    TranslatedPicture(const QSize &pictureSize, const QList<TextBlock> &blocks, const QStringList &translations,
                      const QString &targetLanguage, const OverlayFontSettings &fontSettings);

    /// Draws the pane's glass and the overlays over the picture.
    void paintOver(QImage &picture, double glassOpacity) const;

    /// Every line in the order of recognition.
    QJsonArray toJson() const;

private:
    std::vector<TranslatedLine> m_lines;
};

} // namespace lucentra
