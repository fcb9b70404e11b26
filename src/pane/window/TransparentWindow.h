#pragma once

#include "Callback.h"
#include "ClickRecognizer.h"
#include "PaneWindowHints.h"
#include "PassPane.h"
#include "UserMoveTracker.h"
#include "WindowDrag.h"

#include <QList>
#include <QWidget>

#include <optional>

namespace lucentra {

class GlassView;
class LocalizationManager;
class ResizeHandle;
class SettingsStore;
class WindowButton;

/// The pane's window: frameless, translucent, above all others and on all desktops. It equals the pane, and draws its
/// three buttons itself. Dragging the pane's body moves it. Closing it, by whatever means, only hides it.
class TransparentWindow : public QWidget, public PassSource
{
public:
    /// Points. The smallest size has room for the three buttons beside the capsule of a running pass, and for the
    /// smallest form of an error card.
    static constexpr QSize initialSize{480, 280};
    static constexpr QSize smallestSize{320, 100};

    struct Services
    {
        PaneWindowHints &hints;
        const SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
    };

    /// The window is in the middle of the main screen and not shown.
    explicit TransparentWindow(const Services &services);

    /// Takes ownership of the view, which fills the window.
    void setContentView(GlassView *view);

    /// The user has taken hold of the window (true), or has let go of it without having moved it (false).
    Callback<bool> onUserHold;
    /// The user has moved or resized the window. The argument is the time since the release.
    Callback<std::chrono::milliseconds> onUserMoved;
    /// The window's rectangle has changed, for whatever reason. Called for each step of a drag.
    Callback<> onFrameChanged;
    /// The window has appeared (mapped and not minimized) or disappeared.
    Callback<bool> onShown;

    /// Mapped and not minimized.
    bool isShown() const { return m_isShown; }
    /// Asked to show itself, and not on the screen yet.
    bool isAppearing() const { return isVisible() && !isMinimized() && !m_hasAppeared; }
    /// Shows the window, even if it is minimized, above the others and with the focus.
    void makeKeyAndOrderFront();
    /// Hides the window. The program keeps running.
    void orderOut() { hide(); }
    /// Applies "showInDock".
    void updatePresence();

    /// Close, minimize, zoom.
    const QList<WindowButton *> &standardButtons() const { return m_buttons; }

    bool isOnScreen() const override;
    bool isInputMode() const override;
    GlassArea glassArea() const override;
    QList<QRectF> windowControlExclusionRects(double padding) const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addButtons();
    void addResizeHandles();
    void retranslate();
    void zoom();
    void endManagersDrag();
    void beginMove(QPoint pressed, QPoint pointer);
    void beginResize(Qt::Edges edges, QPoint pointer);
    void dragBody(QPointF pointer);
    void continueDrag(QPoint pointer);
    void endDrag();
    void frameChanged();
    void updateShown();
    void updateMask();

    const Services m_services;
    UserMoveTracker m_userMoves;
    GlassView *m_view = nullptr;
    QList<WindowButton *> m_buttons;
    QList<ResizeHandle *> m_handles;
    ClickRecognizer m_clicks;
    std::optional<WindowDrag> m_drag; ///< one that the window manager didn't take over
    bool m_isManagersDrag = false;    ///< one that it did
    QRect m_beforeZoom;               ///< where no window manager remembers it
    bool m_isShown = false;
    bool m_hasAppeared = false; ///< since it was shown last
    bool m_areCornersCut = false;
};

} // namespace lucentra
