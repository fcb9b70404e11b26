#pragma once

#include "Callback.h"
#include "OverlayPicture.h"
#include "PassThroughContainerView.h"

#include <functional>
#include <vector>

namespace lucentra {

/// Shows the overlays on the pane. To assistive programs each of them is a label in this view.
///
/// While there are overlays, the Tab key goes to this view, and the arrow keys, Home and End choose one of them.
class OverlayView : public PassThroughContainerView
{
public:
    /// The keys that copy the chosen overlay's source.
    static constexpr QKeyCombination copySource = Qt::CTRL | Qt::SHIFT | Qt::Key_C;

    explicit OverlayView(QWidget *parent);

    const OverlayPicture &picture() const { return m_picture; }
    void setOverlays(const QList<TranslationOverlayCandidate> &candidates, const OverlayPicture::Setting &setting);
    void clear();
    QList<TranslationOverlayCandidate> candidates() const;

    /// The overlays that can be seen, in the order of the candidates. Valid until they change.
    std::vector<const OverlayPicture::Overlay *> shown() const;
    /// The number of the overlay that the user has chosen by keys, in the order of `shown`; -1 if the view doesn't have
    /// the focus.
    int chosen() const { return hasFocus() ? m_chosen : -1; }
    /// Gives the view the focus and chooses an overlay.
    void choose(int number);
    /// The overlay at a point of the pane, or the chosen one if it is there; null if there is none.
    const OverlayPicture::Overlay *overlayAt(QPointF point) const;

    /// Called when the overlays, or the chosen one, have changed. Set by the view's accessible interface.
    Callback<> onChanged;
    Callback<> onChosen;
    std::function<void(const OverlayPicture::Overlay &, bool isSource)> onCopy; ///< the keys that copy were pressed

    /// The place of the chosen overlay, for the context menu.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void changed(const QRegion &area);

    OverlayPicture m_picture;
    int m_chosen = 0;
};

} // namespace lucentra
