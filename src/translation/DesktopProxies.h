#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// A proxy as libcurl takes it; an empty `url` means a direct connection.
struct ProxyAddress
{
    QByteArray url; ///< scheme, host and port, without credentials
    QByteArray user;
    QByteArray password;
};

/// Which proxy the desktop wants for a server.
///
/// Asking the desktop may take long (a proxy script, a name service that doesn't answer), so each question runs on a
/// thread of its own that nobody has to wait for, and its answer holds for `validity`. Loopback addresses need none.
/// May be called from any thread.
class DesktopProxies
{
public:
    static constexpr std::chrono::seconds validity{30};

    using Lookup = std::function<QList<QNetworkProxy>(const QUrl &)>;

    /// With the lookup to ask; the desktop's own where it is unset.
    explicit DesktopProxies(Lookup lookup);
    ~DesktopProxies();

    /// The proxy for a URL of which only scheme, host and port count. Throws `TransportError`: `timedOut` where the
    /// answer doesn't come before the deadline, `cancelled` after `cancel`.
    ProxyAddress proxyFor(const QUrl &url, std::chrono::steady_clock::time_point deadline);

    /// Ends every wait, for good.
    void cancel();

private:
    struct State;

    const std::shared_ptr<State> m_state; ///< shared with the threads that still ask
};

} // namespace lucentra
