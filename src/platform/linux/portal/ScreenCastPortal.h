#pragma once

#include "ScreenShares.h"

#include <tl/expected.hpp>

#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// Why there is no screen share.
enum class ScreenCastProblem {
    NoService, ///< no bus, no portal, or one that can't share the screen
    Refused,   ///< by the user, or by the desktop on the user's behalf
    NoAnswer,  ///< not in time
    Failed,    ///< the portal ended, or returned something unusable
    Cancelled,
};

/// One screen share by the desktop's portal, on a connection of its own to the session bus. Blocking calls, on one
/// thread; only `cancel` may be called on any thread. Destroying it ends the share.
class ScreenCastPortal
{
public:
    /// How long the desktop may take for a step in which it asks nobody. The portal may have to be started.
    static constexpr std::chrono::seconds stepPatience{10};
    /// How long the user may take for the desktop's question. It is closed then.
    static constexpr std::chrono::seconds userPatience{90};

    ScreenCastPortal();
    ~ScreenCastPortal();

    struct Share
    {
        QList<SharedMonitor> monitors;
        QString nextToken; ///< empty if the desktop gives none
    };

    /// Whether there is a portal that can share the screen. Asks nobody.
    bool isOffered();
    /// Starts to share monitors, without a question if the token is still valid. `parentWindow` is the window that the
    /// question belongs to, as the portal names windows. `seemsToAsk` is called on this thread when the desktop takes as
    /// long as for a question.
    tl::expected<Share, ScreenCastProblem> start(const QString &token, const QString &parentWindow,
                                                 std::function<void()> seemsToAsk);
    /// A descriptor of a PipeWire connection with the share's streams, which the caller closes, or -1.
    int openPipeWire();
    /// Whether the desktop or the user has ended the share.
    bool hasEnded();
    /// Ends all waiting for good.
    void cancel();

private:
    class Calls;
    std::unique_ptr<Calls> m_calls;
};

} // namespace lucentra
