#pragma once

#include "GlassAreaCapture.h"
#include "OverlayPlacement.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>

namespace lucentra {

/// Which form the pane's translate button takes.
enum class TranslationActionState { translate, retranslate, retry };

/// What a translation pass needs of the pane and its window. Main thread only.
class PassPane
{
public:
    virtual ~PassPane() = default;

    /// The window exists and its rectangle touches a display (a minimized or hidden one lies on none).
    virtual bool isOnScreen() const = 0;
    /// The window is mapped and not minimized.
    virtual bool isWindowVisible() const = 0;
    /// Shows the window, raises it and gives it the focus.
    virtual void makeKeyAndOrderFront() = 0;

    virtual QSizeF paneSize() const = 0; ///< points
    virtual GlassArea glassArea() const = 0;
    /// Where the window's own buttons lie, grown by `padding` points: none or one rectangle in pane points.
    virtual QList<QRectF> windowControlExclusionRects(double padding) const = 0;

    virtual bool isInputMode() const = 0;
    virtual void submitManualInput() = 0;
    /// Runs the callback that the pane's translate action runs.
    virtual void translateTapped() = 0;

    virtual void dismissPristineHint() = 0;
    virtual void clearOverlays() = 0;
    /// The busy state of the pane, its border and its capsule.
    virtual void setProcessing(bool processing) = 0;
    virtual void setTranslationActionState(TranslationActionState state) = 0;
    virtual void addTranslationOverlay(const QString &text, const OverlayLimits &limits, const QRectF &rect) = 0;
    /// Says something over the overlays for as long as it takes to read, or until the user does something.
    virtual void showNote(const QString &text) = 0;
    /// Replaces the overlays by a card with one button.
    virtual void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                               std::function<void()> action) = 0;
};

} // namespace lucentra
