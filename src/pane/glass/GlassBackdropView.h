#pragma once

#include "CalmGlass.h"
#include "FrostedBackdrop.h"
#include "Transition.h"

#include <QImage>
#include <QList>
#include <QWidget>

namespace lucentra {

/// The frosted glass that fills the pane, beneath everything else on it.
class GlassBackdropView : public QWidget
{
public:
    explicit GlassBackdropView(QWidget *parent = nullptr);

    /// The picture beneath the pane, of the pane's size in device pixels. If it is null, the glass is its tint alone.
    void setContent(const QImage &content);
    bool hasContent() const { return !m_content.isNull(); }
    const QImage &content() const { return m_content; }

    /// The glass's opacity, from 0 to 1, at once or by a short animation.
    void setOpacity(double opacity, bool animated);
    GlassTone tone() const { return m_frosted.tone(); }
    void setTone(GlassTone tone);
    void setCalmAreas(const QList<CalmArea> &areas);
    /// An opaque surface instead of glass, without the content beneath.
    void setOpaque(bool opaque);
    /// Draws the opaque ground of a view on the glass, which is dark on light glass, too: grey with a trace of the content's colours and nothing sharp.
    /// `surface` is a rounded rectangle in the coordinates of `view`, a view on the same pane, and so is the painter.
    void paintSurface(QPainter &painter, const QRectF &surface, double radius, const QWidget &view) const;
    /// Changes when surfaces look different.
    int surfaceVersion() const { return m_surfaceVersion; }
    /// If windows aren't blended, the content itself is drawn beneath the glass, so that it looks the same.
    void setComposited(bool composited);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeStale();
    void renderGlass();
    void calm(QPainter &painter);
    void paintContent(QPainter &painter);

    QImage m_content;
    FrostedBackdrop m_frosted;
    FrostedBackdrop m_dark; ///< of surfaces on the glass
    Transition m_opacity;
    bool m_isOpaque = false;
    int m_surfaceVersion = 0;
    bool m_isComposited = true;
    QList<CalmArea> m_calmAreas;
    QImage m_calmMask; ///< see `calmMask`; null if it is out of date
    bool m_isMaskJoined = false;
    QImage m_glass; ///< the glass as it is shown, at the soft scale and with a margin
    bool m_isGlassStale = true;
};

} // namespace lucentra
