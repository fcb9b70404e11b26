#include "QueuedServer.h"

#include <QPointer>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <condition_variable>
#include <deque>
#include <mutex>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lucentra {

QByteArray ReceivedRequest::header(const QByteArray &name) const
{
    for (const auto &[each, value] : headers) {
        if (each.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QueuedAnswer QueuedAnswer::reply(int status, const QByteArray &body,
                                 const QList<std::pair<QByteArray, QByteArray>> &headers)
{
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(status) + " Status\r\n";
    for (const auto &[name, value] : headers)
        bytes += name + ": " + value + "\r\n";
    bytes += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    return {.bytes = bytes};
}

struct QueuedServer::State
{
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::deque<QueuedAnswer> queued;
    Responder responder;
    QList<ReceivedRequest> requests;
    int connections = 0;
    int answers = 0;
    quint16 port = 0;
};

/// Takes connections, reads requests and writes answers; lives in the server's thread.
class QueuedServer::Listener : public QObject
{
public:
    Listener(State &state, const std::optional<QSslConfiguration> &tls)
        : m_state(state)
        , m_isSecure(tls.has_value())
    {
        if (tls) {
            auto *const server = new QSslServer(this);
            server->setSslConfiguration(*tls);
            m_server = server;
        } else {
            m_server = new QTcpServer(this);
        }
        connect(m_server, &QTcpServer::pendingConnectionAvailable, this, &Listener::takeConnection);
        m_server->listen(QHostAddress::LocalHost);
        m_state.port = m_server->serverPort();
    }

    bool isSecure() const { return m_isSecure; }

private:
    struct Held
    {
        QPointer<QTcpSocket> socket;
        QueuedAnswer answer;
    };

    void takeConnection()
    {
        while (QTcpSocket *const socket = m_server->nextPendingConnection()) {
            const std::lock_guard lock(m_state.mutex);
            ++m_state.connections;
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
            connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
                m_buffers.remove(socket);
                socket->deleteLater();
            });
            if (socket->bytesAvailable() > 0)
                QMetaObject::invokeMethod(
                    socket, [this, socket] { read(socket); }, Qt::QueuedConnection);
        }
    }

    void read(QTcpSocket *socket)
    {
        QByteArray &buffer = m_buffers[socket];
        buffer += socket->readAll();
        while (auto request = takeRequest(buffer)) {
            receive(socket, std::move(*request));
        }
    }

    static std::optional<ReceivedRequest> takeRequest(QByteArray &buffer)
    {
        const qsizetype end = buffer.indexOf("\r\n\r\n");
        if (end < 0)
            return std::nullopt;
        const QList<QByteArray> lines = buffer.first(end).replace("\r\n", "\n").split('\n');
        const QList<QByteArray> start = lines.first().split(' ');
        ReceivedRequest request{.method = start.value(0), .target = start.value(1), .headers = {}, .body = {}};
        for (const QByteArray &line : lines.sliced(1)) {
            const qsizetype colon = line.indexOf(':');
            request.headers.append({line.first(colon), line.sliced(colon + 1).trimmed()});
        }
        const qsizetype length = request.header("Content-Length").toLongLong();
        if (buffer.size() < end + 4 + length)
            return std::nullopt;
        request.body = buffer.sliced(end + 4, length);
        buffer.remove(0, end + 4 + length);
        return request;
    }

    void receive(QTcpSocket *socket, ReceivedRequest request)
    {
        QueuedAnswer answer = QueuedAnswer::reply(500, "no answer is queued");
        {
            const std::lock_guard lock(m_state.mutex);
            request.answersBefore = m_state.answers;
            request.unansweredThen = int(m_state.requests.size()) + 1 - m_state.answers;
            if (!m_state.queued.empty()) {
                answer = m_state.queued.front();
                m_state.queued.pop_front();
            } else if (m_state.responder) {
                answer = m_state.responder(request);
            }
            m_state.requests.append(std::move(request));
            m_state.changed.notify_all();
        }
        m_held.append({socket, answer});
        releaseHeld();
    }

    void releaseHeld()
    {
        const QList<Held> held = std::exchange(m_held, {});
        const qsizetype received = requestCount();
        for (const Held &each : held) {
            if (each.answer.isNever)
                continue;
            if (received < each.answer.afterRequests)
                m_held.append(each);
            else if (each.answer.delay > 0ms)
                QTimer::singleShot(each.answer.delay, this, [this, each] { answer(each); });
            else
                answer(each);
        }
    }

    qsizetype requestCount() const
    {
        const std::lock_guard lock(m_state.mutex);
        return m_state.requests.size();
    }

    void answer(const Held &held)
    {
        {
            const std::lock_guard lock(m_state.mutex);
            ++m_state.answers;
        }
        if (!held.socket)
            return;
        held.socket->write(held.answer.bytes);
        if (!held.answer.repeated.isEmpty())
            repeat(held.socket, held.answer);
        else if (held.answer.closes)
            held.socket->disconnectFromHost();
    }

    static void repeat(QTcpSocket *socket, const QueuedAnswer &answer)
    {
        if (answer.interval > 0ms) {
            auto *const timer = new QTimer(socket);
            connect(timer, &QTimer::timeout, socket, [socket, answer] { socket->write(answer.repeated); });
            timer->start(answer.interval);
            return;
        }
        connect(socket, &QTcpSocket::bytesWritten, socket, [socket, answer] {
            if (socket->bytesToWrite() < 1'000'000)
                socket->write(answer.repeated);
        });
        socket->write(answer.repeated);
    }

    State &m_state;
    const bool m_isSecure;
    QTcpServer *m_server = nullptr;
    QHash<QTcpSocket *, QByteArray> m_buffers;
    QList<Held> m_held;
};

QueuedServer::QueuedServer(const std::optional<QSslConfiguration> &tls)
    : m_state(std::make_shared<State>())
{
    m_thread.start();
    auto *const context = new QObject;
    context->moveToThread(&m_thread);
    QMetaObject::invokeMethod(
        context, [&] { m_listener = new Listener(*m_state, tls); }, Qt::BlockingQueuedConnection);
    context->deleteLater();
}

QueuedServer::~QueuedServer()
{
    m_listener->deleteLater();
    m_thread.quit();
    m_thread.wait();
}

QByteArray QueuedServer::origin(const QByteArray &host) const
{
    return (m_listener->isSecure() ? "https://" : "http://") + host + ':' + QByteArray::number(m_state->port);
}

quint16 QueuedServer::port() const
{
    return m_state->port;
}

void QueuedServer::enqueue(const QueuedAnswer &answer)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->queued.push_back(answer);
}

void QueuedServer::respondWith(const Responder &responder)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->responder = responder;
}

QList<ReceivedRequest> QueuedServer::requests() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->requests;
}

void QueuedServer::reset()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->requests.clear();
    m_state->queued.clear();
    m_state->answers = 0;
}

int QueuedServer::connectionCount() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->connections;
}

bool QueuedServer::waitForRequests(int count) const
{
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, 10s, [&] { return m_state->requests.size() >= count; });
}

} // namespace lucentra
