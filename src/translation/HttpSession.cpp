#include "HttpSession.h"

#include "HttpExchange.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;
using Kind = TransportError::Kind;

/// How many channels wait for their next request; each keeps the connections of one earlier thread.
constexpr size_t mostIdleChannels = 4;

/// How long a download takes at most; it ends much earlier if no data arrive.
constexpr std::chrono::hours longestDownload{24};
/// How often a download asks whether it is still wanted.
constexpr int downloadPollMilliseconds = 200;

} // namespace

/// The connections and TLS sessions that earlier transfers have left open.
///
/// libcurl can share both between threads, but 7.88 does so unsafely (a shared connection cache, and OpenSSL's session
/// objects being changed while they are shared). So a channel belongs to one thread while it works.
struct HttpSession::Channel
{
    Owned<CURLSH, curl_share_cleanup> share{curl_share_init()};
    Owned<CURLM, curl_multi_cleanup> multi{curl_multi_init()};

    Channel() { curl_share_setopt(share.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION); }
};

struct HttpSession::State
{
    QString certificateFile;
    DesktopProxies proxies;
    std::atomic<bool> isCancelled = false;
    std::mutex mutex;
    std::vector<std::unique_ptr<Channel>> idle{}; // guarded by the mutex; the last one was used last
    std::vector<Channel *> working{};             // guarded by the mutex
};

struct HttpSession::Download
{
    const TakePiece &take;
    const std::function<bool()> &isWanted;
};

HttpSession::HttpSession()
    : HttpSession(Options{})
{
}

HttpSession::HttpSession(Options options)
    : m_state(new State{.certificateFile = std::move(options.certificateFile),
                        .proxies = DesktopProxies(std::move(options.proxies))})
{
    static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (initialized != CURLE_OK)
        throw TransportError(Kind::other);
}

HttpSession::~HttpSession() = default;

HttpResponse HttpSession::send(const HttpRequest &request) const
{
    HttpResponse answer;
    sendTogether({request}, [&](qsizetype, const HttpResponse &response) { answer = response; });
    return answer;
}

void HttpSession::sendTogether(const QList<HttpRequest> &requests,
                               const std::function<void(qsizetype, const HttpResponse &)> &answered) const
{
    transfer(requests, answered, nullptr);
}

int HttpSession::download(const HttpRequest &request, const TakePiece &take,
                          const std::function<bool()> &isWanted) const
{
    const Download download{.take = take, .isWanted = isWanted};
    int status = 0;
    transfer(
        {request}, [&](qsizetype, const HttpResponse &response) { status = response.status; }, &download);
    return status;
}

void HttpSession::transfer(const QList<HttpRequest> &requests,
                           const std::function<void(qsizetype, const HttpResponse &)> &answered,
                           const Download *download) const
{
    const Clock::time_point start = Clock::now();
    /// A channel for the time of this call.
    struct Lease
    {
        State &state;
        std::unique_ptr<Channel> channel;

        explicit Lease(State &from)
            : state(from)
        {
            const std::lock_guard lock(state.mutex);
            if (state.idle.empty()) {
                channel = std::make_unique<Channel>();
            } else {
                channel = std::move(state.idle.back());
                state.idle.pop_back();
            }
            state.working.push_back(channel.get());
        }
        ~Lease()
        {
            const std::lock_guard lock(state.mutex);
            std::erase(state.working, channel.get());
            if (state.idle.size() < mostIdleChannels)
                state.idle.push_back(std::move(channel));
        }
    };
    const Lease lease(*m_state);
    CURLM *const multi = lease.channel->multi.get();

    /// The transfers that libcurl works on. However the work ends, none is left behind.
    struct Transfers
    {
        CURLM *multi;
        std::vector<std::unique_ptr<HttpExchange>> exchanges{};

        ~Transfers()
        {
            for (const auto &exchange : exchanges)
                curl_multi_remove_handle(multi, exchange->handle()); // does nothing if the transfer has ended
        }
    };
    Transfers transfers{.multi = multi};
    for (const HttpRequest &request : requests) {
        if (!wireUrl(request.url))
            throw TransportError(Kind::invalidRequest);
        const Clock::time_point deadline = start + request.timeout;
        const ProxyAddress proxy = m_state->proxies.proxyFor(QUrl::fromEncoded(request.url), deadline);
        transfers.exchanges.push_back(std::make_unique<HttpExchange>(
            request, proxy, m_state->certificateFile, lease.channel->share.get(),
            download ? start + longestDownload : deadline, download ? &download->take : nullptr));
    }
    for (const auto &exchange : transfers.exchanges)
        curl_multi_add_handle(multi, exchange->handle());

    for (qsizetype unanswered = requests.size(); unanswered > 0;) {
        if (m_state->isCancelled || (download && !download->isWanted()))
            throw TransportError(Kind::cancelled);
        int running = 0;
        int waiting = 0;
        if (curl_multi_perform(multi, &running) != CURLM_OK)
            throw TransportError(Kind::other);
        while (const CURLMsg *const message = curl_multi_info_read(multi, &waiting)) {
            const CURLcode code = message->data.result; // not valid any more once the handle is removed
            CURL *const easy = message->easy_handle;
            const auto exchange = std::find_if(transfers.exchanges.begin(), transfers.exchanges.end(),
                                               [easy](const auto &each) { return each->handle() == easy; });
            curl_multi_remove_handle(multi, easy);
            if (code != CURLE_OK)
                throw(*exchange)->error(code);
            if ((*exchange)->followRedirect()) {
                curl_multi_add_handle(multi, easy);
            } else {
                --unanswered;
                answered(exchange - transfers.exchanges.begin(), (*exchange)->takeResponse());
            }
        }
        // Returns at once if libcurl has something to do; a wake-up is never lost. The limit is only an upper bound.
        if (unanswered > 0)
            curl_multi_poll(multi, nullptr, 0, download ? downloadPollMilliseconds : 60'000, nullptr);
    }
}

void HttpSession::cancelAll()
{
    m_state->isCancelled = true;
    m_state->proxies.cancel();
    const std::lock_guard lock(m_state->mutex);
    for (Channel *const channel : m_state->working)
        curl_multi_wakeup(channel->multi.get());
}

} // namespace lucentra
