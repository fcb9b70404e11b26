#pragma once

#include "Desktop.h"
#include "ProgramClaim.h"
#include "ScreenShares.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class MainQueue;
class Scheduler;
class SessionBus;

/// Whether the environment names a session of Wayland.
bool isWaylandSession();

/// Selects the toolkit's platform plugin; to be called before the application object exists. Returns a text key that
/// explains to the user why there is no desktop to run on, or nullopt.
std::optional<QString> prepareDesktop();

/// What a desktop needs of the program. References outlive it.
struct DesktopParts
{
    Scheduler &scheduler;
    SessionBus &bus;
    MainQueue &mainQueue;
    /// Looks up a text key in the interface language. Any thread.
    std::function<QString(const QString &key)> localized;
    /// Where it stores the user's permissions to capture the screen.
    ScreenShareStore screenShares;
};

/// The desktop of this session. Needs the application object.
std::unique_ptr<Desktop> makeDesktop(const DesktopParts &parts);
/// The claim by means of the X server. Null if it isn't needed beside the session bus and would only start XWayland.
std::unique_ptr<ProgramClaim> makeProgramClaim(bool hasBus);

/// Waits until the display of this process, which was lost, takes connections again. Returns false if it doesn't within
/// the given time, and at once in an X11 session, which ends with its display.
bool waitForDisplay(std::chrono::milliseconds patience);

} // namespace lucentra
