#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// A proxy for libcurl. An empty `url` means a direct connection.
struct ProxyAddress
{
    QByteArray url; ///< scheme, host and port, without credentials
    QByteArray user;
    QByteArray password;
};

/// The desktop's proxy for a server.
///
/// The look-up may take long (a proxy script, a name service that doesn't answer), so each runs on a detached thread,
/// and its result is cached for `validity`. Loopback addresses need no proxy. Any thread.
class DesktopProxies
{
public:
    static constexpr std::chrono::seconds validity{30};

    using Lookup = std::function<QList<QNetworkProxy>(const QUrl &)>;

    /// Uses the given look-up, or the desktop's if it is unset.
    explicit DesktopProxies(Lookup lookup);

    /// The proxy for a URL; only scheme, host and port matter. Throws `TransportError`: `timedOut` if there is no
    /// answer before the deadline, `cancelled` after `cancel`.
    ProxyAddress proxyFor(const QUrl &url, std::chrono::steady_clock::time_point deadline);

    /// Ends all current and future waits.
    void cancel();

private:
    struct State;

    const std::shared_ptr<State> m_state; ///< shared with the detached threads
};

} // namespace lucentra
