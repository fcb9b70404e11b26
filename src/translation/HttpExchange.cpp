#include "HttpExchange.h"

#include <algorithm>

namespace lucentra {

namespace {

using Kind = TransportError::Kind;

/// A control character would end the header and start another.
bool holdsControlCharacter(const QByteArray &text)
{
    return std::any_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x20 || c == 0x7f; });
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

HttpExchange::HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile,
                           CURLSH *share, std::chrono::steady_clock::time_point deadline,
                           const HttpSession::TakePiece *take)
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
    if (status / 100 != 3 || m_redirectsLeft == 0 || !mayRedirect(m_url, target, m_request.mayChangeHost))
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

} // namespace lucentra
