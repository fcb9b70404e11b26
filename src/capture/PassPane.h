#pragma once

#include "GlassAreaCapture.h"
#include "OverlayPlacement.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>

namespace lucentra {

/// The form of the pane's translate button.
enum class TranslationActionState { translate, retranslate, retry };

/// The operations of the pane and its window that a translation pass needs.
class PassPane
{
public:
    virtual ~PassPane() = default;

    /// Whether the window is shown and its rectangle intersects a display.
    virtual bool isOnScreen() const = 0;
    /// Whether the window is mapped and not minimized.
    virtual bool isWindowVisible() const = 0;
    /// Shows, raises and activates the window.
    virtual void makeKeyAndOrderFront() = 0;

    virtual QSizeF paneSize() const = 0; ///< points
    virtual GlassArea glassArea() const = 0;
    /// The area of the window's own buttons, grown by `padding` points: zero or one rectangle in pane points.
    virtual QList<QRectF> windowControlExclusionRects(double padding) const = 0;

    virtual bool isInputMode() const = 0;
    virtual void submitManualInput() = 0;
    /// Calls the callback of the pane's translate action.
    virtual void translateTapped() = 0;

    virtual void dismissPristineHint() = 0;
    virtual void clearOverlays() = 0;
    /// Sets the busy state of the pane, its border and its capsule.
    virtual void setProcessing(bool processing) = 0;
    virtual void setTranslationActionState(TranslationActionState state) = 0;
    virtual void addTranslationOverlay(const QString &text, const OverlayLimits &limits, const QRectF &rect) = 0;
    /// Shows a note over the overlays for the time it takes to read, or until the user does something.
    virtual void showNote(const QString &text) = 0;
    /// Replaces the overlays by a card with a button.
    virtual void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                               std::function<void()> action) = 0;
};

} // namespace lucentra
