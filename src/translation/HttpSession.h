#pragma once

#include "HttpUrl.h"
#include "TranslationError.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QNetworkProxy>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace lucentra {

/// One request, ready for the wire.
struct HttpRequest
{
    QByteArray method = "GET";
    QByteArray url;                                   ///< as `wireUrl` returns it; sent unchanged
    QList<std::pair<QByteArray, QByteArray>> headers; ///< sent in this order; an empty value is sent as an empty header
    QByteArray body;                                  ///< sent if the method isn't GET
    std::chrono::milliseconds timeout{45'000};        ///< for the whole exchange including look-ups and redirects
    /// Whether redirects to other hosts are followed, too: to protected ones only, and from https only to https. For
    /// requests without a secret.
    bool mayChangeHost = false;

    bool operator==(const HttpRequest &) const = default;
};

/// The server's answer, whatever its status.
struct HttpResponse
{
    int status = 0;
    QByteArray body;
};

/// Blocking HTTP requests. Any number of threads concurrently; none waits for another.
///
/// Connections and TLS sessions are reused. TLS is always verified. Redirects are followed within the same origin
/// (scheme, host and port), unless the request allows more; others are returned as answers. Uses the desktop's proxies,
/// except for loopback addresses.
class HttpSession
{
public:
    /// The maximum sizes of an answer's decoded body and of its head. A larger answer is `answerTooLarge`.
    static constexpr qsizetype largestBody = qsizetype(16) * 1024 * 1024;
    static constexpr qsizetype largestHead = qsizetype(256) * 1024;
    /// The maximum number of redirects per request.
    static constexpr int mostRedirects = 5;

    /// Finds the proxies for a URL in the order of preference. Called on a separate thread, may block.
    using ProxyLookup = std::function<QList<QNetworkProxy>(const QUrl &)>;

    struct Options
    {
        QString certificateFile; ///< trusted authorities (PEM); the system's if empty
        ProxyLookup proxies;     ///< the desktop's if unset
    };

    HttpSession();
    explicit HttpSession(Options options);
    ~HttpSession(); ///< no request may be under way; see `cancelAll`

    /// Sends the request and waits for the whole answer. Throws `TransportError`.
    HttpResponse send(const HttpRequest &request) const;

    /// Sends all requests concurrently and calls `answered` with each answer and its request's position as soon as it
    /// has arrived, on the calling thread. Throws the first `TransportError`, or what `answered` throws, and ends the
    /// others.
    void sendTogether(const QList<HttpRequest> &requests,
                      const std::function<void(qsizetype, const HttpResponse &)> &answered) const;

    /// Receives a body piece by piece, each with the status of the answer. Returns false to end the transfer.
    using TakePiece = std::function<bool(int status, QByteArrayView piece)>;

    /// Sends the request and passes the bodies of its answers, also those of redirects, to `take` as they arrive: not
    /// decoded and of any size. The request's timeout limits the time without data. Returns the status of the last
    /// answer. Throws `TransportError`; it is `cancelled` if `take` or `isWanted`, which is called several times per
    /// second, returns false. Both are called on the calling thread.
    int download(const HttpRequest &request, const TakePiece &take, const std::function<bool()> &isWanted) const;

    /// Ends all running and future requests with `cancelled`. Any thread; permanent. Doesn't wait for their threads.
    void cancelAll();

private:
    struct Channel;
    struct State;
    struct Download;

    void transfer(const QList<HttpRequest> &requests,
                  const std::function<void(qsizetype, const HttpResponse &)> &answered, const Download *download) const;

    const std::unique_ptr<State> m_state;
};

} // namespace lucentra
