#pragma once

#include "TranslationError.h"

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lucentra {

/// One request, ready for the wire.
struct HttpRequest
{
    QByteArray method = "GET";
    QByteArray url;                                   ///< http or https, encoded already; sent byte for byte
    QList<std::pair<QByteArray, QByteArray>> headers; ///< sent in this order, an empty value as an empty header
    QByteArray body;                                  ///< sent where the method isn't GET
    std::chrono::milliseconds timeout{45'000};        ///< for the whole exchange, look-ups and redirects included

    bool operator==(const HttpRequest &) const = default;
};

/// What the server answered, whatever the status.
struct HttpResponse
{
    int status = 0;
    QByteArray body;
};

/// Why there is no answer. Its failures have the domain "HttpSession" and the kind as code.
class TransportError : public TranslationError
{
public:
    enum class Kind {
        timedOut = 1,
        hostUnknown,
        cannotConnect,
        connectionLost,
        certificate, ///< the server isn't who it claims to be
        secureConnection,
        proxy,
        notHttp,
        answerTooLarge,
        invalidRequest, ///< the request can't be put on the wire: a line break in a header, a malformed URL
        cancelled,
        other,
    };

    explicit TransportError(Kind kind)
        : m_kind(kind)
    {
    }

    Kind kind() const { return m_kind; }
    Failure failure(const LocalizationManager &texts) const override;

private:
    Kind m_kind;
};

/// HTTP requests that block their caller: any number of threads at once, none waits for another.
///
/// Connections and TLS sessions are kept between requests. TLS is always verified. Redirects are followed within the
/// same origin (scheme, host and port) only; any other is an answer like the rest. Proxies are the desktop's, except
/// for loopback addresses, which are always reached directly.
class HttpSession
{
public:
    /// The largest body that is taken, decoded, and the largest head of an answer; more is `answerTooLarge`.
    static constexpr qsizetype largestBody = qsizetype(16) * 1024 * 1024;
    static constexpr qsizetype largestHead = qsizetype(256) * 1024;
    /// How often one request follows a redirect.
    static constexpr int mostRedirects = 5;

    /// Finds the proxies for a URL in the order of preference; called on a thread of its own, may block.
    using ProxyLookup = std::function<QList<QNetworkProxy>(const QUrl &)>;

    struct Options
    {
        QString certificateFile; ///< authorities to trust (PEM); the system's where empty
        ProxyLookup proxies;     ///< the desktop's where unset
    };

    HttpSession();
    explicit HttpSession(Options options);
    ~HttpSession(); ///< no request may be under way; see `cancelAll`
    HttpSession(const HttpSession &) = delete;
    HttpSession &operator=(const HttpSession &) = delete;

    /// Sends the request and waits for the whole answer. Throws `TransportError`.
    HttpResponse send(const HttpRequest &request) const;

    /// Sends all requests side by side and hands over each answer, by its request's position, as soon as it is there
    /// (on the calling thread). Throws the first `TransportError`, or what `answered` throws; the others end then.
    void sendTogether(const QList<HttpRequest> &requests,
                      const std::function<void(qsizetype, const HttpResponse &)> &answered) const;

    /// Ends every request under way at once, and every later one before it starts, with `cancelled`. Any thread; for
    /// good. It doesn't wait for their threads.
    void cancelAll();

private:
    class Channel;
    class ChannelPool;

    const std::unique_ptr<ChannelPool> m_channels;
};

/// The bytes as a URL for a request; nothing where they are none: no http or https, no host, or a character that has
/// no place in a URL.
std::optional<QByteArray> wireUrl(const QByteArray &url);

} // namespace lucentra
