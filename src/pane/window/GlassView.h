#pragma once

#include "AccessibilityDisplayOptions.h"
#include "Callback.h"
#include "OverlayActions.h"
#include "OverlayView.h"
#include "PaneHints.h"
#include "PassPane.h"

#include <QImage>
#include <QList>
#include <QPointer>
#include <QWidget>

namespace lucentra {

class ControlCapsuleView;
class GlassBackdropView;
class GlassErrorCard;
class LocalizationManager;
class NeonBorderView;
class SettingsStore;
class TipCard;

/// The pane: frosted glass with a glowing border, on which translations, hints, the error card and the capsule of
/// buttons are shown. It places them; a pass drives it through `PassView`, and the user through `PaneControls`.
class GlassView : public QWidget, public PassView
{
public:
    struct Services
    {
        const SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
    };

    GlassView(const Services &services, const AccessibilityDisplayOptions &displayOptions);

    ControlCapsuleView &capsule() { return *m_capsule; }
    PaneHints &hints() { return *m_hints; }
    OverlayActions &overlayActions() { return m_overlayActions; }

    Callback<> onTextsChanged;   ///< see `textPlaces`
    Callback<bool> onCornersCut; ///< whether the window must have rounded corners by its shape
    Callback<int> onBodyClicked; ///< a click on the pane's body, the first or second of a pair

    /// The picture beneath the pane, of its size in device pixels; null if it isn't known.
    void setBackdropContent(const QImage &content);
    /// Whether the window system blends translucent windows.
    void setComposited(bool composited);
    void accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options);

    bool hasTranslations() const { return !m_overlayView->shown().empty(); }
    /// Where there is something new to read on the pane, or its grip.
    QRegion textPlaces() const;
    /// A hidden card on the pane, for its maker to place and show; belongs to the pane.
    TipCard *addTip(const QString &text, const QString &actionTitle);
    /// Hides a view on the pane, which gets its focus, and deletes it later, since it may be handling a click.
    void removeView(QWidget *view);

    /// Covers the glass with a panel for typed text, a child of the pane. Null removes it.
    void setInputPanel(QWidget *panel);
    bool isInputMode() const { return m_inputPanel; }

    void clearOverlays();

    void setProcessing(bool processing) override;
    void showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note) override;
    void changeTranslations(const QList<TranslationOverlayCandidate> &candidates) override;
    void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                       std::function<void()> action) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setOverlays(const QList<TranslationOverlayCandidate> &candidates);
    void removeErrorCard();
    void updateCorners();
    void addBelowCapsule(QWidget *view);
    bool isTextShown() const;
    void updateTone();
    void updateCalmAreas();

    const Services m_services;
    AccessibilityDisplayOptions m_displayOptions;
    GlassBackdropView *m_visualEffect;
    NeonBorderView *m_neonBorderView;
    QWidget *m_grip;
    OverlayView *m_overlayView; ///< made before the capsule, and therefore beneath it and beneath hints
    OverlayActions m_overlayActions;
    ControlCapsuleView *m_capsule;
    QPointer<GlassErrorCard> m_errorCard;
    PaneHints *m_hints; ///< above all but the capsule
    QPointer<QWidget> m_inputPanel;
    bool m_isComposited = true;
};

} // namespace lucentra
