#pragma once

#include "PaneWindowHints.h"
#include "WaylandPointer.h"
#include "WindowDrag.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace lucentra {

class LayerSurface;
class PopupSurface;
class SharedBuffer;
class WaylandConnection;

/// Makes the pane's window a layer surface, and its menus and tool tips popups of that. A layer surface is above all
/// windows, also those in full screen. The compositor never reports its place, so it is kept here, in global points.
class LayerPaneHints : public QObject, public PaneWindowHints
{
public:
    explicit LayerPaneHints(WaylandConnection &connection);
    ~LayerPaneHints() override;

    /// The pane's place; nullopt while it is hidden. Any thread.
    std::optional<QRect> paneFrame() const;

    enum class Concealment { Pane, PaneAndPointer };
    /// Makes the pane invisible, without hiding it from the pointer, until `reveal`. Returns whether there is a pane on
    /// the screen. A picture that is asked for afterwards on the same connection doesn't show the pane.
    bool conceal(Concealment what);
    void reveal();

    void prepare(QWidget &window) override;
    bool isManaged() const override { return false; }
    void apply(const QWindow &, const PaneWindowPresence &) override {}
    bool isPointerButtonDown() const override { return m_pointer.isButtonDown(); }
    void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) override;
    void endDrag(const QWindow &) override { endDrag(); }
    void place(QWidget &window, const QRect &frame) override;
    bool startMove(QWindow &window) override { return startResize(window, {}); }
    bool startResize(QWindow &window, Qt::Edges edges) override;
    bool hasInputFocus(const QWindow &window) const override;
    void setAbove(const QWindow &window, bool isAbove) override;
    void activate(const QWindow &window) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void exposed(QWindow &window);
    void givePaneRole();
    void renewPaneRole();
    void withdrawPaneRole();
    void watchScreen(QScreen *screen);
    void followScreensLater();
    void followScreens();
    void givePopupRole(QWindow &window);
    QWindow *parentOfPopup(const QWidget &popup) const;
    bool isOverPane() const;
    void pressed();
    void released();
    void travelled(QPointF travel);
    void movedOnSurface();
    void drag();
    void endDrag();
    void setFrame(const QRect &frame);

    struct Drag
    {
        WindowDrag window;
        QPointF pointer; ///< now; global points
    };

    WaylandConnection &m_connection;
    WaylandPointer m_pointer;
    QPointer<QWidget> m_pane;
    QPointer<QScreen> m_screen; ///< of the role
    QPoint m_screenCorner;      ///< of that screen when the pane was placed on it
    std::unique_ptr<LayerSurface> m_role;
    std::map<QWindow *, std::unique_ptr<PopupSurface>> m_popups;
    std::unique_ptr<SharedBuffer> m_nothing; ///< a transparent picture in place of the pane's
    int m_concealments = 0;
    QElapsedTimer m_concealed;
    bool m_isPointerConcealed = false;
    mutable std::mutex m_frameMutex;
    QRect m_frame;          ///< guarded by m_frameMutex
    bool m_hasRole = false; ///< guarded by m_frameMutex
    std::function<void(bool)> m_hold;
    std::optional<Drag> m_press; ///< the last one over the pane, and what the window does if that is a drag
    bool m_isHeld = false;       ///< a button is still down since that press
    bool m_isDragged = false;
    int m_movesWithoutTravel = 0; ///< since the press; negative once a relative motion has been reported
    QPointF m_confirmedCorner;    ///< of the pane, as the compositor has it during a drag
};

} // namespace lucentra
