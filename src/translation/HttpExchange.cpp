#include "HttpExchange.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Kind = TransportError::Kind;

struct UrlCleanup
{
    void operator()(CURLU *url) const { curl_url_cleanup(url); }
};
using ParsedUrl = std::unique_ptr<CURLU, UrlCleanup>;

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
    case CURLE_UNSUPPORTED_PROTOCOL: // also what libcurl calls an answer without a status line
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Kind::notHttp;
    case CURLE_OUT_OF_MEMORY: // libcurl's own limits, such as 100 KiB for one header line
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
        return std::nullopt; // libcurl would take the first part of the path for the host
    const ParsedUrl parsed = parse(url);
    if (!parsed || part(parsed, CURLUPART_HOST).isEmpty())
        return std::nullopt;
    const QByteArray scheme = part(parsed, CURLUPART_SCHEME);
    if (scheme != "http" && scheme != "https")
        return std::nullopt;
    return url;
}

HttpExchange::HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile,
                           CURLSH *share, std::chrono::steady_clock::time_point deadline)
    : m_request(request)
    , m_deadline(deadline)
    , m_handle(curl_easy_init())
{
    if (!m_handle)
        throw TransportError(Kind::other);
    CURL *const easy = m_handle.get();
    curl_easy_setopt(easy, CURLOPT_SHARE, share);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A look-up of a name that hangs is left behind rather than waited for.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");   // whatever can be decoded; proxies compress even unasked
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Lucentra"); // some services refuse who doesn't say a name
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
    curl_easy_setopt(easy, CURLOPT_PRIVATE, this);
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
    QList<QByteArray> lines{"Expect:"}; // without a value: libcurl leaves its own one out
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
    // An empty text switches libcurl's own reading of the environment off: the desktop has the say.
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
    const qsizetype length = qsizetype(size) * qsizetype(count);
    if (self.m_body.size() + length > HttpSession::largestBody) {
        self.m_isTooLarge = true;
        return 0;
    }
    self.m_body.append(data, length);
    return size_t(length);
}

size_t HttpExchange::takeHead(const char *, size_t size, size_t count, void *exchange)
{
    auto &self = *static_cast<HttpExchange *>(exchange);
    const qsizetype length = qsizetype(size) * qsizetype(count);
    self.m_headSize += length;
    if (self.m_headSize > HttpSession::largestHead) {
        self.m_isTooLarge = true;
        return 0;
    }
    return size_t(length);
}

bool HttpExchange::followRedirect()
{
    long status = 0;
    const char *location = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(handle(), CURLINFO_REDIRECT_URL, &location);
    const QByteArray target(location);
    if (status / 100 != 3 || !isSameOrigin(m_url, target) || !wireUrl(target) || m_redirectsLeft == 0)
        return false;
    --m_redirectsLeft;
    m_body.clear();
    m_headSize = 0;
    setUrl(target);
    const bool keepsMethod = status == 307 || status == 308;
    if (!keepsMethod) { // as browsers do: what comes instead is fetched
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
    long proxyStatus = 0;
    curl_easy_getinfo(handle(), CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    if (proxyStatus >= 300)
        return TransportError(Kind::proxy);
    return TransportError(kindOf(code));
}

} // namespace lucentra
