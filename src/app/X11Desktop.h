#pragma once

#include "PortalDisplayOptions.h"
#include "SessionBus.h"
#include "X11ChangeMonitor.h"
#include "X11CompositingMonitor.h"
#include "X11GlobalHotkeys.h"
#include "X11PaneWindowHints.h"
#include "X11ScreenCapture.h"

#include <QObject>

class QScreen;

namespace lucentra {

/// Whether the session is one of Wayland, in which this program runs through XWayland.
bool isWaylandSession();

/// The services of an X11 desktop that the pane needs, and their common knowledge of the displays. Main thread; needs
/// the application's connection to the X server.
class X11Desktop : public QObject
{
public:
    X11Desktop(Scheduler &scheduler, SessionBus &sessionBus);

    /// Whether the desktop has a place for status items, of either kind.
    bool hasTray() const;

    SessionBus &bus;
    X11ScreenCapture capture;
    X11ChangeMonitor changes;
    X11CompositingMonitor compositing;
    X11PaneWindowHints windowHints;
    X11GlobalHotkeys hotkeys;
    PortalDisplayOptions displayOptions;

private:
    void watch(QScreen *screen);
    void updateDisplays();
};

} // namespace lucentra
