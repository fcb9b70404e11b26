#pragma once

#include "PaneWindowHints.h"
#include "UserMoveTracker.h"
#include "WindowDrag.h"

#include <QList>
#include <QWidget>

#include <functional>
#include <optional>

namespace lucentra {

class GlassView;
class LocalizationManager;
class ResizeHandle;
class SettingsStore;
class WindowButton;

/// The pane's window: frameless, translucent, above all others and on all desktops. It equals the pane, and draws its
/// three buttons itself. Closing it, by whatever means, only hides it. Main thread only.
class TransparentWindow : public QWidget
{
public:
    /// Points. At the smallest size the capsule of a running pass still stands beside the three buttons, and the
    /// smallest form of an error card still fits.
    static constexpr QSize initialSize{480, 280};
    static constexpr QSize smallestSize{320, 100};

    struct Services
    {
        PaneWindowHints &hints;
        const SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
    };

    /// The window is made in the middle of the main screen and not shown. What is in `services` must outlive it.
    explicit TransparentWindow(const Services &services);

    /// Takes the view over and lets it fill the window.
    void setContentView(GlassView *view);

    /// The user has taken hold of the window (true), or has let go of it without having moved it (false).
    std::function<void(bool)> onUserHold;
    /// The user has moved or resized the window, and let go of it so long ago.
    std::function<void(std::chrono::milliseconds)> onUserMoved;
    /// The window lies elsewhere or has another size, for whatever reason; called for each step on the way.
    std::function<void()> onFrameChanged;
    /// The window has appeared (mapped and not minimized), or is gone.
    std::function<void(bool)> onShown;

    /// Mapped and not minimized.
    bool isShown() const { return m_isShown; }
    /// Shows the window, also a minimized one, above the others and with the focus.
    void makeKeyAndOrderFront();
    /// Hides the window; the program goes on.
    void orderOut() { hide(); }
    /// Brings "showInDock" into force.
    void updatePresence();

    /// The user drags the window by its body, until the button is released. `pressed` is where on the screen it was
    /// taken hold of, `pointer` where the pointer is by now.
    void beginMove(QPoint pressed, QPoint pointer);
    /// To be told of the pointer while `beginMove` is in force and the window manager didn't take over.
    void continueDrag(QPoint pointer);
    void endDrag();

    /// Close, minimize, zoom.
    const QList<WindowButton *> &standardButtons() const { return m_buttons; }
    /// Where windows aren't blended and nothing can stand in for it, the corners are cut off.
    void setCornersCut(bool cut);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addButtons();
    void addResizeHandles();
    void retranslate();
    void userHolds(bool isHeld);
    void zoom();
    void endManagersDrag();
    void beginResize(Qt::Edges edges, QPoint pointer);
    void frameChanged();
    void updateShown();
    void updateMask();

    const Services m_services;
    UserMoveTracker m_userMoves;
    GlassView *m_view = nullptr;
    QList<WindowButton *> m_buttons;
    QList<ResizeHandle *> m_handles;
    std::optional<WindowDrag> m_drag; ///< one that the window manager didn't take over
    bool m_isManagersDrag = false;    ///< one that it did
    bool m_isShown = false;
    bool m_hasAppeared = false; ///< since it was shown last
    bool m_areCornersCut = false;
};

} // namespace lucentra
