#pragma once

#include "GlassAreaCapture.h"
#include "OverlayPlacement.h"

#include <QList>
#include <QRectF>
#include <QString>

#include <functional>

namespace lucentra {

/// The form of the pane's translate button.
enum class TranslationActionState { translate, retranslate, retry };

/// What a pass asks for.
class PassSource
{
public:
    virtual ~PassSource() = default;

    /// Whether the window is shown and its rectangle intersects a display.
    virtual bool isOnScreen() const = 0;
    virtual bool isInputMode() const = 0;
    virtual GlassArea glassArea() const = 0;
    /// The area of the window's own buttons, grown by `padding` points: zero or one rectangle in pane points.
    virtual QList<QRectF> windowControlExclusionRects(double padding) const = 0;
};

/// What a pass reports.
class PassView
{
public:
    virtual ~PassView() = default;

    /// Whether a pass runs. At its beginning, the pane's start hint, overlays and error card disappear. The result, if
    /// there is one, follows the end.
    virtual void setProcessing(bool processing) = 0;
    /// Shows the overlays, and over them, unless it is empty, a note for the time it takes to read.
    virtual void showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note) = 0;
    /// Replaces the overlays that differ, while the screen is followed. The others stay untouched.
    virtual void changeTranslations(const QList<TranslationOverlayCandidate> &candidates) = 0;
    /// Replaces the overlays by a card with a button.
    virtual void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                               std::function<void()> action) = 0;
};

} // namespace lucentra
