#pragma once

#include <QBrush>
#include <QImage>
#include <QRectF>

class QPainter;

namespace lucentra {

/// The pane's frosted glass: what lies beneath the pane, blurred and dimmed to a calm dark tone of its own colours, so
/// that bright text on it can be read over light and dark content alike. A value; making one may be done on any
/// thread.
class FrostedBackdrop
{
public:
    /// The tint alone, for where nothing can be captured.
    FrostedBackdrop() = default;
    /// `content` is what lies beneath the pane, `pixelsPerPoint` its scale.
    explicit FrostedBackdrop(const QImage &content, double pixelsPerPoint = 1);

    /// Draws the glass over `rect` (the content's place, in the painter's coordinates), at an opacity from 0 to 1.
    void paint(QPainter &painter, const QRectF &rect, double opacity) const;
    /// Fills a part of `rect` with the glass, opaque.
    QBrush brush(const QRectF &rect) const;
    /// Draws what glass of that opacity over the content looks like, without the content's sharp lines: opaque. Nothing
    /// where there is no content.
    void paintCalm(QPainter &painter, const QRectF &rect, double opacity) const;

private:
    // A quarter of the content's size: there is nothing sharp in them.
    QImage m_blurred;
    QImage m_glass;
};

} // namespace lucentra
