#include "HttpSession.h"

#include "DesktopProxies.h"
#include "HttpExchange.h"
#include "LocalizationManager.h"

#include <QHash>

#include <curl/curl.h>

#include <atomic>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;

/// How many channels wait for their next request; each keeps the connections of one earlier thread.
constexpr size_t mostIdleChannels = 4;

QString sentenceFor(TransportError::Kind kind)
{
    using Kind = TransportError::Kind;
    switch (kind) {
    case Kind::timedOut:
        return u"連線逾時，請稍後再試"_s;
    case Kind::hostUnknown:
        return u"找不到伺服器，請檢查網路連線與網址"_s;
    case Kind::cannotConnect:
        return u"無法連線到伺服器"_s;
    case Kind::connectionLost:
        return u"與伺服器的連線已中斷"_s;
    case Kind::certificate:
        return u"伺服器的安全憑證無效"_s;
    case Kind::secureConnection:
        return u"無法與伺服器建立安全連線"_s;
    case Kind::proxy:
        return u"無法透過代理伺服器連線"_s;
    case Kind::notHttp:
        return u"伺服器的回應不是有效的 HTTP 回應"_s;
    case Kind::answerTooLarge:
        return u"伺服器的回應過大"_s;
    case Kind::invalidRequest:
        return u"API Key 或設定含有無法傳送的字元"_s;
    case Kind::cancelled:
        return u"要求已取消"_s;
    case Kind::other:
        break;
    }
    return u"網路連線發生錯誤"_s;
}

void initializeLibrary()
{
    static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (initialized != CURLE_OK)
        throw TransportError(TransportError::Kind::other);
}

} // namespace

Failure TransportError::failure(const LocalizationManager &texts) const
{
    return {.domain = u"HttpSession"_s, .code = int(m_kind), .description = texts.localized(sentenceFor(m_kind))};
}

/// The transfers of one thread at a time, with the connections and TLS sessions that earlier ones have left open.
///
/// libcurl can share both between threads, yet 7.88 does so unsafely (a shared connection cache, and OpenSSL's session
/// objects being changed while they are shared). So a channel belongs to one thread while it works.
class HttpSession::Channel
{
public:
    Channel()
        : m_share(curl_share_init())
        , m_multi(curl_multi_init())
    {
        curl_share_setopt(m_share.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
    }

    CURLSH *share() const { return m_share.get(); }
    /// Any thread.
    void wake() { curl_multi_wakeup(m_multi.get()); }

    /// Runs the exchanges to their end. `isCancelled` is looked at after every `wake`.
    void run(const std::vector<std::unique_ptr<HttpExchange>> &exchanges,
             const std::function<void(qsizetype, const HttpResponse &)> &answered,
             const std::atomic<bool> &isCancelled);

private:
    struct ShareCleanup
    {
        void operator()(CURLSH *share) const { curl_share_cleanup(share); }
    };
    struct MultiCleanup
    {
        void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
    };

    const std::unique_ptr<CURLSH, ShareCleanup> m_share;
    const std::unique_ptr<CURLM, MultiCleanup> m_multi;
};

void HttpSession::Channel::run(const std::vector<std::unique_ptr<HttpExchange>> &exchanges,
                               const std::function<void(qsizetype, const HttpResponse &)> &answered,
                               const std::atomic<bool> &isCancelled)
{
    /// The transfers that libcurl works on; whichever way the work ends, none stays behind.
    struct Transfers
    {
        CURLM *multi;
        QHash<CURL *, qsizetype> positions;

        void add(CURL *easy, qsizetype position)
        {
            curl_multi_add_handle(multi, easy);
            positions.insert(easy, position);
        }
        qsizetype take(CURL *easy)
        {
            curl_multi_remove_handle(multi, easy);
            return positions.take(easy);
        }
        ~Transfers()
        {
            for (CURL *const easy : positions.keys())
                curl_multi_remove_handle(multi, easy);
        }
    };
    Transfers transfers{.multi = m_multi.get(), .positions = {}};
    for (size_t i = 0; i < exchanges.size(); ++i)
        transfers.add(exchanges[i]->handle(), qsizetype(i));

    while (!transfers.positions.isEmpty()) {
        if (isCancelled)
            throw TransportError(TransportError::Kind::cancelled);
        int running = 0;
        int waiting = 0;
        if (curl_multi_perform(m_multi.get(), &running) != CURLM_OK)
            throw TransportError(TransportError::Kind::other);
        while (const CURLMsg *const message = curl_multi_info_read(m_multi.get(), &waiting)) {
            const CURLcode code = message->data.result; // the message goes with its transfer
            CURL *const easy = message->easy_handle;
            const qsizetype position = transfers.take(easy);
            HttpExchange &exchange = *exchanges[size_t(position)];
            if (code != CURLE_OK)
                throw exchange.error(code);
            if (exchange.followRedirect())
                transfers.add(easy, position);
            else
                answered(position, exchange.takeResponse());
        }
        // Returns at once where libcurl has something to do; a wake-up is never lost. The limit is only an upper bound.
        if (!transfers.positions.isEmpty())
            curl_multi_poll(m_multi.get(), nullptr, 0, 60'000, nullptr);
    }
}

/// The channels at work and those that wait for their next thread.
class HttpSession::ChannelPool
{
public:
    explicit ChannelPool(Options options)
        : m_certificateFile(std::move(options.certificateFile))
        , m_proxies(std::move(options.proxies))
    {
    }

    void run(const QList<HttpRequest> &requests, const std::function<void(qsizetype, const HttpResponse &)> &answered);
    void cancelAll();

private:
    std::unique_ptr<Channel> take();
    void giveBack(std::unique_ptr<Channel> channel);

    const QString m_certificateFile;
    DesktopProxies m_proxies;
    std::atomic<bool> m_isCancelled = false;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<Channel>> m_idle; // guarded by m_mutex; the last one was used last
    std::vector<Channel *> m_working;             // guarded by m_mutex
};

std::unique_ptr<HttpSession::Channel> HttpSession::ChannelPool::take()
{
    const std::lock_guard lock(m_mutex);
    std::unique_ptr<Channel> channel;
    if (m_idle.empty()) {
        channel = std::make_unique<Channel>();
    } else {
        channel = std::move(m_idle.back());
        m_idle.pop_back();
    }
    m_working.push_back(channel.get());
    return channel;
}

void HttpSession::ChannelPool::giveBack(std::unique_ptr<Channel> channel)
{
    const std::lock_guard lock(m_mutex);
    std::erase(m_working, channel.get());
    if (m_idle.size() < mostIdleChannels)
        m_idle.push_back(std::move(channel));
}

void HttpSession::ChannelPool::cancelAll()
{
    m_isCancelled = true;
    m_proxies.cancel();
    const std::lock_guard lock(m_mutex);
    for (Channel *const channel : m_working)
        channel->wake();
}

void HttpSession::ChannelPool::run(const QList<HttpRequest> &requests,
                                   const std::function<void(qsizetype, const HttpResponse &)> &answered)
{
    const Clock::time_point start = Clock::now();
    const auto giveBackWhenDone = [this](Channel *channel) { giveBack(std::unique_ptr<Channel>(channel)); };
    const std::unique_ptr<Channel, decltype(giveBackWhenDone)> channel(take().release(), giveBackWhenDone);
    std::vector<std::unique_ptr<HttpExchange>> exchanges;
    for (const HttpRequest &request : requests) {
        if (!wireUrl(request.url))
            throw TransportError(TransportError::Kind::invalidRequest);
        const Clock::time_point deadline = start + request.timeout;
        const ProxyAddress proxy = m_proxies.proxyFor(QUrl::fromEncoded(request.url), deadline);
        exchanges.push_back(
            std::make_unique<HttpExchange>(request, proxy, m_certificateFile, channel->share(), deadline));
    }
    channel->run(exchanges, answered, m_isCancelled);
}

HttpSession::HttpSession()
    : HttpSession(Options{})
{
}

HttpSession::HttpSession(Options options)
    : m_channels(std::make_unique<ChannelPool>(std::move(options)))
{
    initializeLibrary();
}

HttpSession::~HttpSession() = default;

HttpResponse HttpSession::send(const HttpRequest &request) const
{
    HttpResponse answer;
    m_channels->run({request}, [&](qsizetype, const HttpResponse &response) { answer = response; });
    return answer;
}

void HttpSession::sendTogether(const QList<HttpRequest> &requests,
                               const std::function<void(qsizetype, const HttpResponse &)> &answered) const
{
    m_channels->run(requests, answered);
}

void HttpSession::cancelAll()
{
    m_channels->cancelAll();
}

} // namespace lucentra
