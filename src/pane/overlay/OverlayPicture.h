#pragma once

#include "CalmGlass.h"
#include "OverlayPainter.h"
#include "OverlayPlacement.h"
#include "OverlayTypesetter.h"

#include <QRegion>

#include <optional>
#include <vector>

namespace lucentra {

/// The translations of one result on a pane: their layout, the calm glass that they need, and their painting.
class OverlayPicture
{
public:
    /// What the overlays are laid out for. A change lays all of them out anew.
    struct Setting
    {
        QSizeF paneSize;
        QString targetLanguage; ///< a BCP 47 tag
        OverlayFontSettings font;

        bool operator==(const Setting &) const = default;
    };

    struct Overlay
    {
        TranslationOverlayCandidate candidate; ///< the overlay's identity
        std::optional<OverlayPainter> painter; ///< nullopt if the source is too small for an overlay

        /// The overlay's frame and its source line. Only with a painter.
        QRectF place() const { return painter->layout().frame.united(candidate.rect); }
    };

    /// Replaces the overlays. Those whose candidate is in the old list, too, are kept as they are, even if other lines
    /// now leave it more room, or less that it doesn't need. Returns the area of the others, old and new, in pane
    /// points.
    QRegion setOverlays(const QList<TranslationOverlayCandidate> &candidates, const Setting &setting);

    QRegion clear() { return setOverlays({}, m_setting); }

    /// One per candidate, in the same order.
    const std::vector<Overlay> &overlays() const { return m_overlays; }
    /// The places of the overlays.
    QList<CalmArea> calmAreas() const;
    /// The overlay, or the source line that it covers, at a point of the pane; null if there is none. Valid until the
    /// overlays change.
    const Overlay *overlayAt(QPointF point) const;
    /// Paints the overlays that touch `area`, in pane points.
    void paint(QPainter &painter, const QRegion &area);

private:
    Overlay addTranslationOverlay(const TranslationOverlayCandidate &candidate);

    Setting m_setting;
    std::optional<OverlayTypesetter> m_typesetter; ///< of the target language
    std::vector<Overlay> m_overlays;
};

} // namespace lucentra
