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

#include <functional>

namespace lucentra {

class ControlCapsuleView;
class GlassBackdropView;
class GlassErrorCard;
class GripView;
class LocalizationManager;
class NeonBorderView;
class SettingsStore;
class TipCard;

/// The pane: frosted glass with a glowing border, on which translations, hints, the error card and the capsule of
/// buttons are shown. It never captures, recognizes or translates by itself; a pass drives it through `PassView`.
class GlassView : public QWidget, public PassView
{
public:
    struct Services
    {
        SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
    };

    GlassView(const Services &services, const AccessibilityDisplayOptions &displayOptions, QWidget *parent = nullptr);

    /// Typed text on the pane. Any of the functions may be empty.
    struct ManualInput
    {
        /// Makes the panel that takes the text, as a child of the given widget.
        std::function<QWidget *(QWidget *)> makePanel;
        std::function<void()> submit; ///< translates what has been typed
        std::function<void()> copy;   ///< copies the translation
        std::function<void()> reset;  ///< cancels and forgets everything, including a running pass
    };
    ManualInput manualInput;

    // Any of these may be empty.
    std::function<void()> onTranslateTapped; ///< starts a pass over the area beneath the pane
    std::function<void()> onSettingsTapped;
    std::function<void()> onHistoryTapped;
    /// The user looks for the history's entry of a text on the pane.
    Callback<const QString &, const QString &> onOpenInHistory;
    Callback<> onTextsChanged;   ///< see `textPlaces`
    Callback<bool> onCornersCut; ///< whether the window must have rounded corners by its shape

    /// The picture beneath the pane, of its size in device pixels; null if it isn't known.
    void setBackdropContent(const QImage &content);
    /// Whether the window system blends translucent windows.
    void setComposited(bool composited);
    void accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options);
    /// Whether the pointer is over the pane or a view on it.
    void setHovering(bool hovering);

    /// Shows the start hint for the current settings. To be called once the pane is on the screen: the first text takes
    /// long, since the toolkit reads the list of all fonts for it.
    void showPristineHint();
    bool isPristine() const { return m_hints.isPristine(); }
    /// A hint replaces the one before it. A temporary one fades after 1.5 seconds.
    void showHint(const QString &text, bool temporary) { m_hints.show(text, temporary); }
    void showNote(const QString &text) { m_hints.showNote(text); }

    /// The context menu's items for what is at a point of the pane. Valid until the next call.
    QList<QAction *> textActionsAt(QPoint place) { return m_overlayActions.menuItemsAt(place); }

    /// The translate action of clicks, buttons, menus and hotkeys: starts a pass, or translates the typed text in input
    /// mode.
    void performTranslateAction();
    /// A click on the pane's body, the first or second of a pair.
    void bodyClicked(int count);
    void toggleTriggerMode();
    void toggleInputMode();
    void selectTargetLanguage(const QString &code);

    bool isProcessing() const { return m_isProcessing; }
    bool hasTranslations() const { return !m_overlayView->shown().empty(); }
    /// Where there is something new to read on the pane, or its grip.
    QRegion textPlaces() const;
    /// A hidden card on the pane, for its maker to place and show; belongs to the pane.
    TipCard *addTip(const QString &text, const QString &actionTitle);

    /// Whether translations follow the screen, and what went wrong with that; empty if all is well.
    void setLive(bool isLive, const QString &trouble);

    bool isInputMode() const { return m_isInputMode; }
    void dismissPristineHint() { m_hints.dismissStart(); }
    void clearOverlays();
    /// Sets the busy state of the pane, its border and its capsule.
    void setProcessing(bool processing);

    void passStarted() override;
    void passEnded() override { setProcessing(false); }
    void showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note) override;
    void changeTranslations(const QList<TranslationOverlayCandidate> &candidates) override;
    void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                       std::function<void()> action) override;

protected:
    /// Shows the whole text of an overlay that is cut off as a tool tip.
    bool event(QEvent *event) override;
    /// The arrow keys go to the overlays.
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setupControlCapsule();
    void observeNotifications();
    bool isDoubleClickGesture() const;
    void updateCapsuleState();
    void setOverlays(const QList<TranslationOverlayCandidate> &candidates);
    void removeErrorCard();
    void setTranslationActionState(TranslationActionState state);
    void placeCapsule();
    void updateCorners();
    void addBelowCapsule(QWidget *view);
    bool isTextShown() const;
    void updateTone();
    void updateCalmAreas();
    void showManualInput();
    void hideManualInput();

    const Services m_services;
    AccessibilityDisplayOptions m_displayOptions;
    GlassBackdropView *m_visualEffect;
    NeonBorderView *m_neonBorderView;
    GripView *m_grip;
    OverlayView *m_overlayView; ///< made before the capsule, and therefore beneath it and beneath hints
    OverlayActions m_overlayActions;
    ControlCapsuleView *m_capsule;
    QPointer<GlassErrorCard> m_errorCard;
    PaneHints m_hints;
    QPointer<QWidget> m_inputPanel;
    QString m_targetLanguageCode;
    TranslationActionState m_translationActionState = TranslationActionState::translate;
    bool m_isComposited = true;
    bool m_isProcessing = false;
    bool m_isInputMode = false;
    bool m_isHovering = false;
    bool m_isLive = false;
    QString m_liveTrouble;
};

} // namespace lucentra
