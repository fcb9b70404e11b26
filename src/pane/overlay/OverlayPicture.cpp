#include "OverlayPicture.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace lucentra {

QRegion OverlayPicture::setOverlays(const QList<TranslationOverlayCandidate> &candidates, const Setting &setting)
{
    const bool canKeep = setting == m_setting;
    if (setting.targetLanguage != m_setting.targetLanguage)
        m_typesetter.reset();
    m_setting = setting;
    std::vector<Overlay> old = std::exchange(m_overlays, {});
    QRegion changed;
    const auto markChanged = [&](const Overlay &overlay) {
        if (overlay.painter)
            changed |= overlay.painter->paintedArea().toAlignedRect();
    };
    for (const TranslationOverlayCandidate &candidate : candidates) {
        const auto kept = std::find_if(
            old.begin(), old.end(), [&](const Overlay &overlay) { return canKeep && overlay.candidate == candidate; });
        if (kept != old.end()) {
            m_overlays.push_back(std::move(*kept));
            old.erase(kept);
        } else {
            m_overlays.push_back(addTranslationOverlay(candidate));
            markChanged(m_overlays.back());
        }
    }
    std::for_each(old.begin(), old.end(), markChanged);
    return changed;
}

OverlayPicture::Overlay OverlayPicture::addTranslationOverlay(const TranslationOverlayCandidate &candidate)
{
    if (!m_typesetter)
        m_typesetter.emplace(m_setting.targetLanguage);
    const auto layout = layOutOverlay(*m_typesetter, candidate.text, candidate.limits, candidate.rect,
                                      QRectF(QPointF(), m_setting.paneSize), m_setting.font);
    Overlay overlay{.candidate = candidate};
    if (layout)
        overlay.painter.emplace(m_typesetter->typeset(candidate.text), *layout);
    return overlay;
}

QList<CalmArea> OverlayPicture::calmAreas() const
{
    QList<CalmArea> areas;
    for (const Overlay &overlay : m_overlays) {
        if (overlay.painter)
            areas.append({.rect = overlay.painter->layout().frame.united(overlay.candidate.rect)});
    }
    return areas;
}

void OverlayPicture::paint(QPainter &painter, const QRegion &area)
{
    for (Overlay &overlay : m_overlays) {
        if (overlay.painter && area.intersects(overlay.painter->paintedArea().toAlignedRect()))
            overlay.painter->paint(painter);
    }
}

} // namespace lucentra
