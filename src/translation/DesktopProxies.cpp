#include "DesktopProxies.h"

#include "HttpSession.h"

#include <QHash>
#include <QHostAddress>
#include <QNetworkProxyFactory>

#include <condition_variable>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;

bool isLoopback(const QString &host)
{
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

ProxyAddress addressOf(const QNetworkProxy &proxy)
{
    QUrl url;
    switch (proxy.type()) {
    case QNetworkProxy::HttpProxy:
    case QNetworkProxy::HttpCachingProxy:
        url.setScheme(u"http"_s);
        break;
    case QNetworkProxy::Socks5Proxy:
        url.setScheme(u"socks5h"_s); // names are resolved behind the proxy
        break;
    default:
        return {};
    }
    url.setHost(proxy.hostName());
    url.setPort(proxy.port());
    return {.url = url.toEncoded(), .user = proxy.user().toUtf8(), .password = proxy.password().toUtf8()};
}

QList<QNetworkProxy> askDesktop(const QUrl &url)
{
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}

} // namespace

struct DesktopProxies::State
{
    struct Answer
    {
        bool asking = false;
        std::optional<ProxyAddress> proxy;
        Clock::time_point expiry;
    };

    const Lookup lookup;
    std::mutex mutex;
    std::condition_variable changed;
    QHash<QUrl, Answer> answers; // by origin; guarded by mutex, as is what follows
    bool cancelled = false;

    explicit State(Lookup ask)
        : lookup(std::move(ask))
    {
    }
};

DesktopProxies::DesktopProxies(Lookup lookup)
    : m_state(std::make_shared<State>(lookup ? std::move(lookup) : askDesktop))
{
}

ProxyAddress DesktopProxies::proxyFor(const QUrl &url, Clock::time_point deadline)
{
    if (isLoopback(url.host()))
        return {};
    QUrl origin;
    origin.setScheme(url.scheme());
    origin.setHost(url.host());
    origin.setPort(url.port());

    std::unique_lock lock(m_state->mutex);
    State::Answer &known = m_state->answers[origin];
    if (!known.asking && (!known.proxy || known.expiry <= Clock::now())) {
        known = {.asking = true};
        std::thread([state = m_state, origin] {
            const QList<QNetworkProxy> proxies = state->lookup(origin);
            const std::lock_guard answering(state->mutex);
            state->answers[origin] = {.proxy = proxies.isEmpty() ? ProxyAddress() : addressOf(proxies.first()),
                                      .expiry = Clock::now() + validity};
            state->changed.notify_all();
        }).detach();
    }
    std::optional<ProxyAddress> proxy;
    const bool ended = m_state->changed.wait_until(lock, deadline, [&] {
        proxy = m_state->answers[origin].proxy;
        return proxy || m_state->cancelled;
    });
    if (m_state->cancelled)
        throw TransportError(TransportError::Kind::cancelled);
    if (!ended)
        throw TransportError(TransportError::Kind::timedOut);
    return *proxy;
}

void DesktopProxies::cancel()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->cancelled = true;
    m_state->changed.notify_all();
}

} // namespace lucentra
