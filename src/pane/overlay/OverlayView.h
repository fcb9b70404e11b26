#pragma once

#include "OverlayPicture.h"
#include "PassThroughContainerView.h"

#include <functional>

namespace lucentra {

/// Shows the overlays on the pane. To assistive programs each of them is a label in this view.
class OverlayView : public PassThroughContainerView
{
public:
    explicit OverlayView(QWidget *parent);

    const OverlayPicture &picture() const { return m_picture; }
    void setOverlays(const QList<TranslationOverlayCandidate> &candidates, const OverlayPicture::Setting &setting);
    void clear();

    std::function<void()> onChanged; ///< set by what represents the view to assistive programs

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void changed(const QRegion &area);

    OverlayPicture m_picture;
};

} // namespace lucentra
