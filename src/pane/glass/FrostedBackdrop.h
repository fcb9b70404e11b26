#pragma once

#include "Settings.h"

#include <QBrush>
#include <QImage>
#include <QRectF>

class QPainter;

namespace lucentra {

/// The pane's frosted glass: the content beneath the pane, blurred and brought to a calm dark or light tone of its own
/// colours, so that bright or dark text on it is readable over light and dark content. A value type; may be constructed
/// on any thread.
class FrostedBackdrop
{
public:
    /// The tint alone, if nothing can be captured.
    explicit FrostedBackdrop(GlassTone tone = GlassTone::Dark)
        : m_tone(tone)
    {
    }
    /// `content` is the picture beneath the pane.
    explicit FrostedBackdrop(const QImage &content, double pixelsPerPoint = 1, GlassTone tone = GlassTone::Dark);

    GlassTone tone() const { return m_tone; }
    /// The same glass in another tone.
    FrostedBackdrop in(GlassTone tone) const;

    /// Whether nobody would see a difference between the two.
    bool looksLike(const FrostedBackdrop &other) const;

    /// Draws the glass over `rect` (the content's place, in the painter's coordinates), at an opacity from 0 to 1.
    void paint(QPainter &painter, const QRectF &rect, double opacity) const;
    /// Fills a part of `rect` with the glass, opaque.
    QBrush brush(const QRectF &rect) const;
    /// Draws an opaque picture of glass of that opacity over the blurred content. Does nothing without content.
    void paintCalm(QPainter &painter, const QRectF &rect, double opacity) const;

private:
    void applyTone();

    GlassTone m_tone;
    // A quarter of the content's size, since there is nothing sharp in them.
    QImage m_blurred;
    QImage m_glass;
};

} // namespace lucentra
