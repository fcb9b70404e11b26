#pragma once

#include "AccessibilityDisplayOptions.h"
#include "ClickRecognizer.h"
#include "PaneHints.h"
#include "PassPane.h"

#include <QImage>
#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace lucentra {

class ControlCapsuleView;
class GlassBackdropView;
class GlassErrorCard;
class GripView;
class LocalizationManager;
class NeonBorderView;
class OverlayTypesetter;
class SettingsStore;
class TransparentWindow;

/// The pane: frosted glass with a glowing border, on which translations, hints, the error card and the capsule of
/// buttons are shown, and which turns clicks on its body into the translate action. It never captures, recognizes or
/// translates by itself; a pass drives it through `PassPane`. Main thread only.
class GlassView : public QWidget, public PassPane
{
public:
    /// What is in here must outlive the pane.
    struct Services
    {
        SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
    };

    GlassView(const Services &services, const AccessibilityDisplayOptions &displayOptions, QWidget *parent = nullptr);
    ~GlassView() override;

    /// Typed text on the pane. Functions that aren't set are left out.
    struct ManualInput
    {
        /// Makes the panel that takes the text, as a child of the given widget.
        std::function<QWidget *(QWidget *)> makePanel;
        std::function<void()> submit; ///< translates what has been typed
        std::function<void()> copy;   ///< copies the translation
        std::function<void()> reset;  ///< cancels and forgets everything, also a pass that is under way
    };
    ManualInput manualInput;

    // Those that aren't set are left out.
    std::function<void()> onTranslateTapped; ///< starts a pass over the area beneath the pane
    std::function<void()> onSettingsTapped;
    std::function<void()> onHistoryTapped;

    /// What lies beneath the pane, of its size in device pixels; null where it isn't known.
    void setBackdropContent(const QImage &content);
    /// Whether the window system blends translucent windows.
    void setComposited(bool composited);
    void accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options);
    /// The pointer is over the pane, or over something that lies on it.
    void setHovering(bool hovering);

    /// The start hint, in words for the settings in force.
    void showPristineHint();
    bool isPristine() const { return m_hints.isPristine(); }
    /// A hint replaces the one before it. A temporary one fades after 1.5 seconds.
    void showHint(const QString &text, bool temporary) { m_hints.show(text, temporary); }

    /// The translate action of clicks, buttons and menus: a pass, or the typed text in input mode.
    void performTranslateAction();
    void toggleTriggerMode();
    void toggleInputMode();
    void selectTargetLanguage(const QString &code);

    bool isProcessing() const { return m_isProcessing; }

    bool isOnScreen() const override;
    bool isWindowVisible() const override;
    void makeKeyAndOrderFront() override;
    QSizeF paneSize() const override { return size(); }
    GlassArea glassArea() const override;
    /// The display that shows the pane's centre, in the space of `glassArea`; empty where there is none.
    QRectF displayArea() const;
    QList<QRectF> windowControlExclusionRects(double padding) const override;
    bool isInputMode() const override { return m_isInputMode; }
    void submitManualInput() override;
    void translateTapped() override;
    void dismissPristineHint() override { m_hints.dismissStart(); }
    void clearOverlays() override;
    void setProcessing(bool processing) override;
    void setTranslationActionState(TranslationActionState state) override;
    void addTranslationOverlay(const QString &text, const OverlayLimits &limits, const QRectF &rect) override;
    void showNote(const QString &text) override { m_hints.showNote(text); }
    void showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                       std::function<void()> action) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void setupControlCapsule();
    void observeNotifications();
    TransparentWindow *paneWindow() const;
    void dragTo(QPointF pointer, TransparentWindow &window);
    bool isDoubleClickGesture() const;
    void updateCapsuleState();
    void placeCapsule();
    void updateCorners();
    void addBelowCapsule(QWidget *view);
    bool isTextShown() const;
    void updateCalmAreas();
    void showManualInput();
    void hideManualInput();

    const Services m_services;
    AccessibilityDisplayOptions m_displayOptions;
    GlassBackdropView *m_visualEffect;
    NeonBorderView *m_neonBorderView;
    GripView *m_grip;
    ControlCapsuleView *m_capsule;
    QList<QPointer<QWidget>> m_overlayViews;
    QList<QRectF> m_overlayFrames;
    QPointer<GlassErrorCard> m_errorCard;
    PaneHints m_hints;
    std::unique_ptr<OverlayTypesetter> m_typesetter; ///< of the target language; made at its first use
    QPointer<QWidget> m_inputPanel;
    ClickRecognizer m_clicks;
    QString m_targetLanguageCode;
    TranslationActionState m_translationActionState = TranslationActionState::translate;
    bool m_isComposited = true;
    bool m_isProcessing = false;
    bool m_isInputMode = false;
    bool m_isHovering = false;
};

} // namespace lucentra
