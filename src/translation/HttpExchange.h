#pragma once

#include "DesktopProxies.h"
#include "HttpSession.h"
#include "Owned.h"

#include <curl/curl.h>

namespace lucentra {

/// A running request: a transfer of libcurl, the received part of its answer, and the remaining number of redirects.
class HttpExchange
{
public:
    /// Throws `invalidRequest` if the URL or a header is invalid.
    HttpExchange(const HttpRequest &request, const ProxyAddress &proxy, const QString &certificateFile, CURLSH *share,
                 std::chrono::steady_clock::time_point deadline, const HttpSession::TakePiece *take);

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
    const std::chrono::steady_clock::time_point m_deadline;
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

} // namespace lucentra
