#pragma once

#include "Callback.h"
#include "PassPane.h"
#include "Transition.h"

#include <QList>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <functional>
#include <type_traits>
#include <utility>

class QMenu;

namespace lucentra {

class CapsuleButton;
class CapsuleTooltip;
class GlassBackdropView;
class LocalizationManager;
class ProgressIndicator;

/// What the capsule shows.
struct ControlCapsuleState
{
    bool isHovering = false;   ///< the pointer is over the pane
    bool isManual = false;     ///< passes start only when asked for
    bool isInputMode = false;  ///< the pane takes typed text
    bool isProcessing = false; ///< a pass runs
    bool isLive = false;       ///< translations follow the screen
    QString liveTrouble;       ///< why they don't at the moment; empty if all is well
    QString targetLanguageCode;
    TranslationActionState translationActionState = TranslationActionState::translate;
};

/// The row of buttons in the pane's upper right corner. It is visible while the pointer is over the pane, a pass runs
/// or one of its buttons has the focus; Tab and the arrow keys reach all of them. While it is invisible it takes no
/// clicks. It always has the size of its longest row, which is at its right end, so that no button moves when the
/// progress indicator appears or disappears.
class ControlCapsuleView : public QWidget
{
public:
    /// The capsule's ground is made of the glass. The tooltips of the buttons appear beneath the capsule on the parent.
    ControlCapsuleView(const LocalizationManager &localization, const GlassBackdropView &glass, QWidget *parent);

    Callback<> onTranslateTapped;
    Callback<> onTriggerModeTapped;
    Callback<> onKeyboardTapped;
    Callback<> onHistoryTapped;
    Callback<> onCopyTapped;
    Callback<> onSettingsTapped;
    Callback<const QString &> onTargetLanguageSelected;

    /// Changes a field of the state.
    template <typename Value>
    void set(Value ControlCapsuleState::*field, const std::type_identity_t<Value> &value)
    {
        if (std::exchange(m_state.*field, value) != value)
            render();
    }
    const ControlCapsuleState &state() const { return m_state; }
    void setReduceMotion(bool reduceMotion);
    /// Whether the window system blends translucent windows. If so, the menu has rounded corners.
    void setComposited(bool composited);
    double opacity() const { return m_opacity.value(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The state for which the picture of the capsule's ground was painted.
    struct GroundKey
    {
        int surfaceVersion = -1;
        QSize glass;
        QPoint place;
        double progressPresence = 0;
        double pixelsPerPoint = 0;

        bool operator==(const GroundKey &) const = default;
    };

    CapsuleButton *addButton(std::function<void()> callback);
    void makeMenu();
    void showLanguageMenu();
    void render();
    void renderAction();
    void updateProgress();
    void progressChanged();
    void renderGround();
    void updateVisibility();
    void updateTooltip();
    void opacityChanged();
    void findPointer();

    const LocalizationManager &m_localization;
    const GlassBackdropView &m_glass;
    ControlCapsuleState m_state;
    bool m_reduceMotion = false;
    bool m_isComposited = true;
    Transition m_opacity;
    ProgressIndicator *m_progress;
    Transition m_progressPresence; ///< from 0 (absent) to 1
    CapsuleButton *m_action;       ///< translates, or copies in input mode
    bool m_offersCopy = false;
    QPixmap m_ground; ///< kept, since every frame of the border's glow paints it
    GroundKey m_groundKey;
    CapsuleButton *m_triggerMode;
    CapsuleButton *m_keyboard;
    CapsuleButton *m_language;
    CapsuleButton *m_history;
    CapsuleButton *m_settings;
    QMenu *m_menu = nullptr;
    QList<CapsuleButton *> m_buttons;
    CapsuleTooltip *m_tooltip;                ///< the parent's
    CapsuleButton *m_hoveredButton = nullptr; ///< its tooltip is shown
};

} // namespace lucentra
