#pragma once

#include <QByteArray>
#include <QList>
#include <QSslConfiguration>
#include <QThread>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lucentra {

/// A request as it came over the wire.
struct ReceivedRequest
{
    QByteArray method;
    QByteArray target; ///< path and query as sent; a whole URL where the server serves as a proxy
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    int answersBefore = 0;  ///< how many requests were answered when this one was complete
    int unansweredThen = 0; ///< how many were waiting for their answer then, this one included

    /// The header's value; null where it is missing. Names are compared without regard to case.
    QByteArray header(const QByteArray &name) const;
};

/// How the server answers one request.
struct QueuedAnswer
{
    QByteArray bytes;                      ///< sent as they stand
    std::chrono::milliseconds delay{0};    ///< from the request to the first byte
    QByteArray repeated;                   ///< sent after that again and again, until the client hangs up
    std::chrono::milliseconds interval{0}; ///< between two of them; 0: as fast as the client reads
    int afterRequests = 0;                 ///< held back until so many requests have come
    bool isNever = false;                  ///< not answered; the connection stays open
    bool closes = false;                   ///< the connection is closed after it

    /// A whole response with "Content-Length".
    static QueuedAnswer reply(int status, const QByteArray &body,
                              const QList<std::pair<QByteArray, QByteArray>> &headers = {});
    static QueuedAnswer json(const QByteArray &body) { return reply(200, body); }
    static QueuedAnswer raw(const QByteArray &bytes) { return {.bytes = bytes, .closes = true}; }
    static QueuedAnswer never() { return {.isNever = true}; }
};

/// An HTTP/1.1 server on a loopback port of its own that plays queued answers and keeps the requests. It runs in a
/// thread of its own, so that the test's thread may block. Requests that find no queued answer are answered by the
/// responder, else with status 500.
class QueuedServer
{
public:
    using Responder = std::function<QueuedAnswer(const ReceivedRequest &)>;

    /// Speaks TLS where it has a configuration.
    explicit QueuedServer(const std::optional<QSslConfiguration> &tls = {});
    ~QueuedServer();

    /// Scheme, host and port: "http://127.0.0.1:4711".
    QByteArray origin(const QByteArray &host = "127.0.0.1") const;
    quint16 port() const;

    void enqueue(const QueuedAnswer &answer);
    void respondWith(const Responder &responder); ///< called on the server's thread
    /// The requests so far, in the order of their arrival.
    QList<ReceivedRequest> requests() const;
    /// Forgets requests and queued answers.
    void reset();
    int connectionCount() const;
    /// Blocks until so many requests have come, at most ten seconds; false where they haven't.
    bool waitForRequests(int count) const;

private:
    class Listener;
    struct State;

    const std::shared_ptr<State> m_state;
    QThread m_thread;
    Listener *m_listener = nullptr; ///< lives in the thread
};

} // namespace lucentra
