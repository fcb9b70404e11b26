#include "OverlayPicture.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace lucentra {

namespace {

/// Places that differ by less are the same: starts are aligned with those of other lines. Points.
constexpr double samePlace = 3.5;

/// Whether an overlay shows the candidate as it is: the same text at the same place, and nothing new where it extends
/// to. It needn't be laid out anew if other lines have left it more or less room.
bool canStay(const OverlayPicture::Overlay &overlay, const TranslationOverlayCandidate &candidate)
{
    const TranslationOverlayCandidate &shown = overlay.candidate;
    const auto near = [](double a, double b) { return std::abs(a - b) <= samePlace; };
    if (shown.text != candidate.text || !near(shown.rect.left(), candidate.rect.left()) ||
        shown.rect.top() != candidate.rect.top() || shown.rect.right() != candidate.rect.right() ||
        shown.rect.bottom() != candidate.rect.bottom())
        return false;
    OverlayLimits limits = shown.limits;
    limits.bottom = candidate.limits.bottom;
    limits.right = candidate.limits.right;
    if (limits != candidate.limits)
        return false;
    const auto frame = overlay.painter ? overlay.painter->layout().frame : QRectF();
    return frame.bottom() <= std::max(limits.bottom, shown.rect.bottom()) &&
           (frame.right() <= limits.right || frame.right() > shown.limits.right);
}

} // namespace

QRegion OverlayPicture::setOverlays(const QList<TranslationOverlayCandidate> &candidates, const Setting &setting)
{
    const bool canKeep = setting == m_setting;
    if (setting.targetLanguage != m_setting.targetLanguage || setting.font.family != m_setting.font.family)
        m_typesetter.reset();
    m_setting = setting;
    std::vector<Overlay> old = std::exchange(m_overlays, {});
    QRegion changed;
    const auto markChanged = [&](const Overlay &overlay) {
        if (overlay.painter)
            changed |= overlay.painter->paintedArea().toAlignedRect();
    };
    for (const TranslationOverlayCandidate &candidate : candidates) {
        const auto kept = std::find_if(old.begin(), old.end(), [&](const Overlay &overlay) {
            return canKeep && (overlay.candidate == candidate || canStay(overlay, candidate));
        });
        if (kept != old.end()) {
            m_overlays.push_back(std::move(*kept));
            m_overlays.back().candidate.source = candidate.source;
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
        m_typesetter.emplace(m_setting.targetLanguage, m_setting.font.family);
    const QRectF pane(QPointF(), m_setting.paneSize);
    const std::shared_ptr<OverlayText> text = m_typesetter->typeset(candidate.text);
    const auto layout =
        candidate.limits.lineCount > 1
            ? layOutParagraph(*text, candidate.limits, candidate.rect, pane, m_setting.font)
            : layOutOverlay(*m_typesetter, candidate.text, candidate.limits, candidate.rect, pane, m_setting.font);
    Overlay overlay{.candidate = candidate};
    if (layout)
        overlay.painter.emplace(text, *layout, m_setting.font.ground);
    return overlay;
}

QList<CalmArea> OverlayPicture::calmAreas() const
{
    QList<CalmArea> areas;
    for (const Overlay &overlay : m_overlays) {
        if (overlay.painter)
            areas.append({.rect = overlay.place()});
    }
    return areas;
}

const OverlayPicture::Overlay *OverlayPicture::overlayAt(QPointF point) const
{
    const auto topmost = std::find_if(m_overlays.rbegin(), m_overlays.rend(), [&](const Overlay &overlay) {
        return overlay.painter && overlay.place().contains(point);
    });
    return topmost == m_overlays.rend() ? nullptr : &*topmost;
}

void OverlayPicture::paint(QPainter &painter, const QRegion &area)
{
    for (Overlay &overlay : m_overlays) {
        if (overlay.painter && area.intersects(overlay.painter->paintedArea().toAlignedRect()))
            overlay.painter->paint(painter);
    }
}

} // namespace lucentra
