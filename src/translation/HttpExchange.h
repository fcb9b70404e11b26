#pragma once

#include "DesktopProxies.h"
#include "HttpSession.h"

#include <curl/curl.h>

#include <chrono>
#include <memory>

namespace lucentra {

/// A running request: a transfer of libcurl, the received part of its answer, and the remaining number of redirects.
/// One thread only.
class HttpExchange
{
public:
    /// The request must outlive the exchange, and its URL must be a `wireUrl`. Throws `invalidRequest` if a header is
    /// invalid.
    HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile, CURLSH *share,
                 std::chrono::steady_clock::time_point deadline);

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

    struct EasyCleanup
    {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };
    struct ListCleanup
    {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };

    const HttpRequest &m_request;
    const std::chrono::steady_clock::time_point m_deadline;
    std::unique_ptr<curl_slist, ListCleanup> m_headers; ///< must outlive the handle
    std::unique_ptr<CURL, EasyCleanup> m_handle;
    QByteArray m_url;
    QByteArray m_body;
    qsizetype m_headSize = 0;
    bool m_isTooLarge = false;
    int m_redirectsLeft = HttpSession::mostRedirects;
};

} // namespace lucentra
