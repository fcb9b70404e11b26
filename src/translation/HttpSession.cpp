#include "HttpSession.h"

#include "DesktopProxies.h"
#include "LocalizationManager.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

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

template <auto cleanUp>
struct Cleanup
{
    void operator()(auto *object) const { cleanUp(object); }
};
template <typename Object, auto cleanUp>
using Owned = std::unique_ptr<Object, Cleanup<cleanUp>>;

/// The sentences for the user in the order of the kinds.
const std::array sentences{u"連線逾時，請稍後再試"_s,
                           u"找不到伺服器，請檢查網路連線與網址"_s,
                           u"無法連線到伺服器"_s,
                           u"與伺服器的連線已中斷"_s,
                           u"伺服器的安全憑證無效"_s,
                           u"無法與伺服器建立安全連線"_s,
                           u"無法透過代理伺服器連線"_s,
                           u"伺服器的回應不是有效的 HTTP 回應"_s,
                           u"伺服器的回應過大"_s,
                           u"API Key 或設定含有無法傳送的字元"_s,
                           u"要求已取消"_s,
                           u"網路連線發生錯誤"_s};
static_assert(sentences.size() == size_t(Kind::other));

using ParsedUrl = Owned<CURLU, curl_url_cleanup>;

ParsedUrl parse(const QByteArray &url)
{
    ParsedUrl parsed(curl_url());
    if (curl_url_set(parsed.get(), CURLUPART_URL, url.constData(), CURLU_PATH_AS_IS) != CURLUE_OK)
        return nullptr;
    return parsed;
}

QByteArray part(const ParsedUrl &url, CURLUPart which)
{
    char *text = nullptr;
    if (curl_url_get(url.get(), which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK)
        return {};
    QByteArray copy(text);
    curl_free(text);
    return copy;
}

bool isSameOrigin(const QByteArray &one, const QByteArray &other)
{
    const ParsedUrl first = parse(one);
    const ParsedUrl second = parse(other);
    return first && second && part(first, CURLUPART_SCHEME) == part(second, CURLUPART_SCHEME) &&
           part(first, CURLUPART_HOST).toLower() == part(second, CURLUPART_HOST).toLower() &&
           part(first, CURLUPART_PORT) == part(second, CURLUPART_PORT);
}

/// Whether nobody on the network can read a request that is sent on from one URL to the other, either. A server elsewhere
/// may not send it on to this computer.
bool isAsProtected(const QByteArray &from, const QByteArray &to)
{
    const QUrl target = QUrl::fromEncoded(to, QUrl::StrictMode);
    return isProtected(target) && (target.scheme() == u"https" || from.startsWith("http:"));
}

/// A control character would end the header and start another.
bool holdsControlCharacter(const QByteArray &text)
{
    return std::any_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x20 || c == 0x7f; });
}

bool isUrlCharacter(char c)
{
    static const QByteArray punctuation("-._~:/?#[]@!$&'()*+,;=%");
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || punctuation.contains(c);
}

Kind kindOf(CURLcode code)
{
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return Kind::timedOut;
    case CURLE_COULDNT_RESOLVE_HOST:
        return Kind::hostUnknown;
    case CURLE_COULDNT_CONNECT:
        return Kind::cannotConnect;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return Kind::proxy;
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_PARTIAL_FILE:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return Kind::connectionLost;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return Kind::certificate;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
        return Kind::secureConnection;
    case CURLE_UNSUPPORTED_PROTOCOL: // also an answer without a status line
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Kind::notHttp;
    case CURLE_OUT_OF_MEMORY: // libcurl's own limits, such as 100 KiB per header line
        return Kind::answerTooLarge;
    case CURLE_URL_MALFORMAT:
        return Kind::invalidRequest;
    default:
        return Kind::other;
    }
}

} // namespace

std::optional<QByteArray> wireUrl(const QByteArray &url)
{
    if (!std::all_of(url.begin(), url.end(), isUrlCharacter))
        return std::nullopt;
    if (url.sliced(std::max<qsizetype>(url.indexOf("://"), 0)).startsWith(":///"))
        return std::nullopt; // libcurl would use the first part of the path as the host
    const ParsedUrl parsed = parse(url);
    if (!parsed || part(parsed, CURLUPART_HOST).isEmpty())
        return std::nullopt;
    const QByteArray scheme = part(parsed, CURLUPART_SCHEME);
    if (scheme != "http" && scheme != "https")
        return std::nullopt;
    return url;
}

bool isProtected(const QUrl &url)
{
    const QString host = url.host(); // in lower case, like the scheme
    if (url.scheme() == u"https")
        return !host.isEmpty();
    return url.scheme() == u"http" && (host == u"localhost" || host == u"127.0.0.1" || host == u"::1");
}

Failure TransportError::failure(const LocalizationManager &texts) const
{
    return {.domain = u"HttpSession"_s,
            .code = int(m_kind),
            .description = texts.localized(sentences[size_t(m_kind) - 1])};
}

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

namespace {

/// A running request: a transfer of libcurl, the received part of its answer, and the remaining number of redirects.
class HttpExchange
{
public:
    /// References outlive the exchange. Throws `invalidRequest` if the URL or a header is invalid.
    HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile, CURLSH *share,
                 Clock::time_point deadline, const HttpSession::TakePiece *take);

    CURL *handle() const { return m_handle.get(); }

    /// To be called after a successful transfer. If the answer is a redirect to follow, sets up the next transfer.
    bool followRedirect();
    HttpResponse takeResponse();
    /// The error of a transfer that ended with the code.
    TransportError error(CURLcode code) const;

private:
    void setUrl(const QByteArray &url);
    void setHeaders(bool withBody);
    void setMethod(bool withBody);
    void setProxy(const ProxyAddress &proxy);
    static size_t takeBody(const char *data, size_t size, size_t count, void *exchange);
    static size_t takeHead(const char *data, size_t size, size_t count, void *exchange);

    const HttpRequest &m_request;
    const Clock::time_point m_deadline;
    Owned<curl_slist, curl_slist_free_all> m_headers; ///< must outlive the handle
    Owned<CURL, curl_easy_cleanup> m_handle{curl_easy_init()};
    QByteArray m_url;
    QByteArray m_body;
    qsizetype m_headSize = 0;
    bool m_isTooLarge = false;
    int m_redirectsLeft = HttpSession::mostRedirects;
    const HttpSession::TakePiece *m_take; ///< null if the body is collected
    bool m_isStopped = false;             ///< by `m_take`
};

HttpExchange::HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile,
                           CURLSH *share, Clock::time_point deadline, const HttpSession::TakePiece *take)
    : m_request(request)
    , m_deadline(deadline)
    , m_take(take)
{
    if (!m_handle)
        throw TransportError(Kind::other);
    CURL *const easy = m_handle.get();
    curl_easy_setopt(easy, CURLOPT_SHARE, share);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A name look-up that hangs isn't waited for.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");   // all that can be decoded: proxies may compress unasked
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Lucentra"); // some services refuse requests without one
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2);
    if (!certificateFile.isEmpty()) {
        curl_easy_setopt(easy, CURLOPT_CAINFO, certificateFile.toLocal8Bit().constData());
        curl_easy_setopt(easy, CURLOPT_CAPATH, nullptr);
    }
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &HttpExchange::takeBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &HttpExchange::takeHead);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    if (m_take) {
        curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, nullptr);
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, long(request.timeout.count()));
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME,
                         long(std::chrono::ceil<std::chrono::seconds>(request.timeout).count()));
    }
    setProxy(proxy);
    setUrl(request.url);
    const bool withBody = request.method != "GET";
    setHeaders(withBody);
    setMethod(withBody);
}

void HttpExchange::setUrl(const QByteArray &url)
{
    m_url = url;
    curl_easy_setopt(handle(), CURLOPT_URL, m_url.constData());
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now()).count();
    curl_easy_setopt(handle(), CURLOPT_TIMEOUT_MS, long(std::max<qint64>(left, 1))); // 0 would mean none
}

void HttpExchange::setHeaders(bool withBody)
{
    QList<QByteArray> lines{"Expect:"}; // without a value, so that libcurl doesn't send its own
    const auto isContentHeader = [](const QByteArray &name) { return name.toLower().startsWith("content-"); };
    for (const auto &[name, value] : m_request.headers) {
        if (name.isEmpty() || name.contains(':') || holdsControlCharacter(name) || holdsControlCharacter(value))
            throw TransportError(Kind::invalidRequest);
        if (withBody || !isContentHeader(name))
            lines.append(value.isEmpty() ? name + ';' : name + ": " + value);
    }
    m_headers.reset();
    for (const QByteArray &line : lines) {
        if (curl_slist *const longer = curl_slist_append(m_headers.get(), line.constData())) {
            static_cast<void>(m_headers.release());
            m_headers.reset(longer);
        }
    }
    curl_easy_setopt(handle(), CURLOPT_HTTPHEADER, m_headers.get());
}

void HttpExchange::setMethod(bool withBody)
{
    if (!withBody) {
        curl_easy_setopt(handle(), CURLOPT_HTTPGET, 1L);
        return;
    }
    curl_easy_setopt(handle(), CURLOPT_POST, 1L);
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDS, m_request.body.constData());
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
    if (m_request.method != "POST")
        curl_easy_setopt(handle(), CURLOPT_CUSTOMREQUEST, m_request.method.constData());
}

void HttpExchange::setProxy(const ProxyAddress &proxy)
{
    // An empty text keeps libcurl from reading the environment: the desktop's settings count.
    curl_easy_setopt(handle(), CURLOPT_PROXY, proxy.url.constData());
    curl_easy_setopt(handle(), CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (!proxy.user.isEmpty()) {
        curl_easy_setopt(handle(), CURLOPT_PROXYUSERNAME, proxy.user.constData());
        curl_easy_setopt(handle(), CURLOPT_PROXYPASSWORD, proxy.password.constData());
    }
}

size_t HttpExchange::takeBody(const char *data, size_t size, size_t count, void *exchange)
{
    auto &self = *static_cast<HttpExchange *>(exchange);
    if (self.m_take) {
        long status = 0;
        curl_easy_getinfo(self.handle(), CURLINFO_RESPONSE_CODE, &status);
        self.m_isStopped = !(*self.m_take)(int(status), {data, qsizetype(size * count)});
        return self.m_isStopped ? 0 : size * count;
    }
    self.m_body.append(data, qsizetype(size * count));
    self.m_isTooLarge = self.m_body.size() > HttpSession::largestBody;
    return self.m_isTooLarge ? 0 : size * count;
}

size_t HttpExchange::takeHead(const char *, size_t size, size_t count, void *exchange)
{
    auto &self = *static_cast<HttpExchange *>(exchange);
    self.m_headSize += qsizetype(size * count);
    self.m_isTooLarge = self.m_headSize > HttpSession::largestHead;
    return self.m_isTooLarge ? 0 : size * count;
}

bool HttpExchange::followRedirect()
{
    long status = 0;
    const char *location = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(handle(), CURLINFO_REDIRECT_URL, &location);
    const QByteArray target(location);
    const bool mayFollow = isSameOrigin(m_url, target) || (m_request.mayChangeHost && isAsProtected(m_url, target));
    if (status / 100 != 3 || !mayFollow || !wireUrl(target) || m_redirectsLeft == 0)
        return false;
    --m_redirectsLeft;
    m_body.clear();
    m_headSize = 0;
    setUrl(target);
    const bool keepsMethod = status == 307 || status == 308;
    if (!keepsMethod) { // as browsers do, by a GET
        setHeaders(false);
        setMethod(false);
    }
    return true;
}

HttpResponse HttpExchange::takeResponse()
{
    long status = 0;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    return {.status = int(status), .body = std::move(m_body)};
}

TransportError HttpExchange::error(CURLcode code) const
{
    if (m_isTooLarge)
        return TransportError(Kind::answerTooLarge);
    if (m_isStopped)
        return TransportError(Kind::cancelled);
    long proxyStatus = 0;
    curl_easy_getinfo(handle(), CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    if (proxyStatus >= 300)
        return TransportError(Kind::proxy);
    return TransportError(kindOf(code));
}

} // namespace

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
    transfer({request}, [&](qsizetype, const HttpResponse &response) { status = response.status; }, &download);
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
                throw (*exchange)->error(code);
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
