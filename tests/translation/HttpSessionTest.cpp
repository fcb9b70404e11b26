#include "HttpSession.h"
#include "Columns.h"
#include "QueuedServer.h"
#include "TestCertificates.h"
#include "TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <future>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Kind = TransportError::Kind;

namespace {

constexpr int answered = 0;

HttpRequest get(const QByteArray &url, std::chrono::milliseconds timeout = 10s)
{
    return {.method = "GET", .url = url, .headers = {}, .body = {}, .timeout = timeout};
}

/// The kind of the error, or `answered`.
int outcomeOf(const HttpSession &session, const HttpRequest &request)
{
    try {
        session.send(request);
        return answered;
    } catch (const TransportError &error) {
        return int(error.kind());
    }
}

} // namespace

class HttpSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.reset(); }

    void requestsReachTheServerByteForByte()
    {
        m_server.enqueue(QueuedAnswer::reply(418, "kettle"));
        const HttpResponse response = m_session.send({.method = "POST",
                                                      .url = m_server.origin() + "/a/../b;c?q=%E8%ad&r=a+b%2B#nowhere",
                                                      .headers = {{"X-Empty", ""}, {"Authorization", "Bearer 鑰匙"}},
                                                      .body = QByteArray("{\"a\0\xff", 6)});
        QCOMPARE(response.status, 418);
        QCOMPARE(response.body, QByteArray("kettle"));
        const ReceivedRequest request = m_server.requests().constFirst();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.target, QByteArray("/a/../b;c?q=%E8%ad&r=a+b%2B"));
        QVERIFY(!request.header("X-Empty").isNull());
        QCOMPARE(request.header("Authorization"), QByteArray("Bearer 鑰匙"));
        QVERIFY(request.header("Expect").isNull());
        QCOMPARE(request.body, QByteArray("{\"a\0\xff", 6));
    }

    void compressedAnswersAreUnpackedWithinTheLimit()
    {
        const auto deflated = [](const QByteArray &text) {
            return QueuedAnswer::reply(200, qCompress(text).sliced(4), {{"Content-Encoding", "deflate"}});
        };
        m_server.enqueue(deflated("{\"kettle\": true}"));
        QCOMPARE(m_session.send(get(m_server.origin() + "/")).body, QByteArray("{\"kettle\": true}"));
        m_server.enqueue(deflated(QByteArray(64 << 20, ' '))); // 64 KB on the wire
        QVERIFY(outcomeOf(m_session, get(m_server.origin() + "/")) != answered);
    }

    void whatCannotBeSentIsRefused()
    {
        const QByteArray origin = m_server.origin() + '/';
        const auto outcome = [&](const QByteArray &url, const QByteArray &key) {
            HttpRequest request = get(url);
            request.headers = {{"X-Key", key}};
            return outcomeOf(m_session, request);
        };
        for (const QByteArray &key :
             {"secret\r\nX-Injected: 1"_ba, "secret\nX-Injected: 1"_ba, QByteArray("sec\0ret", 7)})
            QCOMPARE(outcome(origin, key), int(Kind::invalidRequest));
        for (const QByteArray &url : {origin + "?key=a\r\nX-Injected: 1", origin + "?key=a b", origin + "?key=鑰",
                                      "file:///etc/passwd"_ba, "http:///v1"_ba, QByteArray()})
            QCOMPARE(outcome(url, "k"), int(Kind::invalidRequest));
        QVERIFY(m_server.requests().isEmpty());
        const QByteArray nobodyListens = QueuedServer().origin();
        QCOMPARE(outcome(nobodyListens + '/', "k"), int(Kind::cannotConnect));
    }

    void badAnswersEndInAnError_data()
    {
        const QByteArray head = "HTTP/1.1 200 OK\r\n";
        const auto endless = [](const QByteArray &start, const QByteArray &piece, std::chrono::milliseconds interval) {
            return QueuedAnswer{.bytes = start, .repeated = piece, .interval = interval};
        };
        const auto row = columns<QueuedAnswer, int>("answer", "outcome");
        row("no HTTP", QueuedAnswer::raw("220 mail.example ESMTP\r\n"), int(Kind::notHttp));
        row("hangs up in the head", QueuedAnswer::raw("HTTP/1.1 20"), int(Kind::connectionLost));
        row("hangs up within a chunk", QueuedAnswer::raw(head + "Transfer-Encoding: chunked\r\n\r\n8\r\nhalf"),
            int(Kind::connectionLost));
        row("never answers", QueuedAnswer::never(), int(Kind::timedOut));
        row("trickles its body", endless(head + "Content-Length: 1000\r\n\r\n", "x", 20ms), int(Kind::timedOut));
        row("one endless header", endless(head + "X: ", QByteArray(10'000, 'x'), 0ms), int(Kind::answerTooLarge));
        row("endless interim answers",
            endless("", "HTTP/1.1 100 Continue\r\nX: " + QByteArray(1000, 'x') + "\r\n\r\n", 0ms),
            int(Kind::answerTooLarge));
        row("endless body", endless(head + "\r\n", QByteArray(100'000, ' '), 0ms), int(Kind::answerTooLarge));
        row("16 MiB are taken", QueuedAnswer::reply(200, QByteArray(HttpSession::largestBody, ' ')), answered);
        row("a byte more is not", QueuedAnswer::reply(200, QByteArray(HttpSession::largestBody + 1, ' ')),
            int(Kind::answerTooLarge));
        row("no body", QueuedAnswer::raw("HTTP/1.1 204 No Content\r\n\r\n"), answered);
    }

    void badAnswersEndInAnError()
    {
        const auto [answer, outcome] = fetched<QueuedAnswer, int>();
        m_server.enqueue(answer);
        QElapsedTimer clock;
        clock.start();
        const auto timeout = outcome == int(Kind::timedOut) ? 300ms : 10s;
        QCOMPARE(outcomeOf(m_session, get(m_server.origin() + "/", timeout)), outcome);
        QVERIFY(clock.elapsed() < 5000);
    }

    void redirectsStayWithinTheOrigin_data()
    {
        // method: of the second request; empty where none follows
        const auto row = columns<int, QByteArray, QByteArray, bool>("status", "location", "method", "mayChangeHost");
        const QByteArray elsewhere = m_server.origin("localhost") + "/there?x=1";
        const QByteArray origin = m_server.origin();
        row("relative, method kept", 307, "/there?x=1", "POST", false);
        row("absolute, method kept", 308, origin + "/there?x=1", "POST", false);
        row("found becomes a GET", 302, "/there?x=1", "GET", false);
        row("another host", 307, elsewhere, {}, false);
        row("another port", 307, "http://127.0.0.1:1/there", {}, false);
        row("another scheme", 307, "https://127.0.0.1:" + QByteArray::number(m_server.port()) + "/there", {}, false);
        row("a file", 302, "file:///etc/passwd", {}, false);
        row("nowhere", 302, {}, {}, false);
        row("another host that may be", 307, elsewhere, "POST", true);
        row("an unprotected host", 307, "http://192.0.2.1/there", {}, true);
        row("a circle", 307, "/here", {}, false);
    }

    void redirectsStayWithinTheOrigin()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, location);
        QFETCH(QByteArray, method);
        QFETCH(bool, mayChangeHost);
        m_server.respondWith([&](const ReceivedRequest &request) {
            return request.target == "/here" ? QueuedAnswer::reply(status, "moved", {{"Location", location}})
                                             : QueuedAnswer::reply(200, "there");
        });
        const HttpResponse response = m_session.send({.method = "POST",
                                                      .url = m_server.origin() + "/here",
                                                      .headers = {{"Content-Type", "text/plain"}, {"X-Key", "k"}},
                                                      .body = "text",
                                                      .mayChangeHost = mayChangeHost});
        const auto requests = m_server.requests();
        if (method.isEmpty()) {
            QCOMPARE(requests.size(), location == "/here" ? 1 + HttpSession::mostRedirects : 1);
            QCOMPARE(response.status, status);
            return;
        }
        QCOMPARE(response.status, 200);
        QCOMPARE(response.body, QByteArray("there"));
        QCOMPARE(requests[1].method, method);
        QCOMPARE(requests[1].target, QByteArray("/there?x=1"));
        QCOMPARE(requests[1].header("X-Key"), QByteArray("k"));
        QCOMPARE(requests[1].body, method == "POST" ? QByteArray("text") : QByteArray());
        QCOMPARE(requests[1].header("Content-Type").isNull(), method == "GET");
    }

    void onlyTrustedServersAreSpokenTo()
    {
        const auto outcome = [](const QString &certificate, bool knowsAuthority) {
            QueuedServer server(serverCertificate(certificate));
            server.respondWith([](const ReceivedRequest &) { return QueuedAnswer::json("{}"); });
            const HttpSession session(
                {.certificateFile = knowsAuthority ? certificateFile(u"authority.pem"_s) : QString(), .proxies = {}});
            const int result = outcomeOf(session, get(server.origin() + "/"));
            return server.requests().size() == (result == answered ? 1 : 0) ? result : -1;
        };
        QCOMPARE(outcome(u"here"_s, true), answered);
        QCOMPARE(outcome(u"here"_s, false), int(Kind::certificate));
        QCOMPARE(outcome(u"expired"_s, true), int(Kind::certificate));
        QCOMPARE(outcome(u"elsewhere"_s, true), int(Kind::certificate)); // another host's
    }

    void connectionsAreKeptAndLeadNowhereElse()
    {
        QueuedServer server(serverCertificate(u"here"_s));
        server.respondWith([&](const ReceivedRequest &) {
            return QueuedAnswer::reply(302, "",
                                       {{"Location", "http://127.0.0.1:" + QByteArray::number(server.port())}});
        });
        const HttpSession session({.certificateFile = certificateFile(u"authority.pem"_s), .proxies = {}});
        HttpRequest request = get(server.origin() + "/");
        request.mayChangeHost = true; // which is no reason to give up https
        const auto status = [&] { return session.send(request).status; };
        QCOMPARE(status(), 302);
        QCOMPARE(std::async(std::launch::async, status).get(), 302);
        QCOMPARE(server.connectionCount(), 1);
    }

    void cancellingEndsEveryWait()
    {
        HttpSession session;
        for (int i = 0; i < 3; ++i)
            m_server.enqueue(QueuedAnswer::never());
        std::vector<std::future<int>> waiting;
        for (int i = 0; i < 3; ++i)
            waiting.push_back(
                std::async(std::launch::async, [&] { return outcomeOf(session, get(m_server.origin() + "/", 30s)); }));
        QVERIFY(m_server.waitForRequests(3));
        QElapsedTimer clock;
        clock.start();
        session.cancelAll();
        for (std::future<int> &each : waiting)
            QCOMPARE(each.get(), int(Kind::cancelled));
        QVERIFY(clock.elapsed() < 5000); // rather than after the 30 seconds of each
        QCOMPARE(outcomeOf(session, get(m_server.origin() + "/")), int(Kind::cancelled));
        QCOMPARE(m_server.requests().size(), 3);
    }

    void theFirstFailureEndsTheOthers()
    {
        m_server.respondWith([](const ReceivedRequest &request) {
            return request.target == "/bad" ? QueuedAnswer::reply(500, "") : QueuedAnswer::never();
        });
        const QByteArray origin = m_server.origin();
        QElapsedTimer clock;
        clock.start();
        try {
            m_session.sendTogether({get(origin + "/hangs"), get(origin + "/bad")},
                                   [](qsizetype, const HttpResponse &) { throw u"refused"_s; });
            QFAIL("nothing was thrown");
        } catch (const QString &thrown) {
            QCOMPARE(thrown, u"refused"_s);
        }
        m_server.respondWith({});
        QVERIFY(clock.elapsed() < 2000);
    }

    void proxiesAreTheDesktops()
    {
        m_server.respondWith([](const ReceivedRequest &request) {
            return request.method == "CONNECT" ? QueuedAnswer::reply(403, "") : QueuedAnswer::json("{}");
        });
        QList<QUrl> asked; // on the look-up's thread, which has ended when the request has
        const HttpSession session({.certificateFile = {}, .proxies = [&](const QUrl &url) {
                                       asked.append(url);
                                       return QList{QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s,
                                                                  m_server.port(), u"me"_s, u"pass"_s)};
                                   }});
        session.send(get("http://service.example/translate?q=1"));
        session.send(get("http://service.example/again"));
        QCOMPARE(outcomeOf(session, get("https://service.example/translate")), int(Kind::proxy));
        session.send(get(m_server.origin() + "/direct"));
        m_server.respondWith({});
        const auto requests = m_server.requests();
        QCOMPARE(requests[0].target, QByteArray("http://service.example/translate?q=1"));
        QCOMPARE(requests[0].header("Proxy-Authorization"), "Basic " + QByteArray("me:pass").toBase64());
        QCOMPARE(requests[2].target, QByteArray("service.example:443"));
        QCOMPARE(requests[3].target, QByteArray("/direct"));
        // An answer holds for a while; what the proxy script of a desktop learns is the origin alone.
        QCOMPARE(asked, (QList<QUrl>{QUrl(u"http://service.example"_s), QUrl(u"https://service.example"_s)}));
    }

    void aProxyLookUpThatHangsEndsInTime()
    {
        const auto release = std::make_shared<std::promise<void>>();
        HttpSession session({.certificateFile = {}, .proxies = [release](const QUrl &) {
                                 release->get_future().wait();
                                 return QList<QNetworkProxy>();
                             }});
        QCOMPARE(outcomeOf(session, get("http://service.example/", 50ms)), int(Kind::timedOut));
        auto waiting =
            std::async(std::launch::async, [&] { return outcomeOf(session, get("http://service.example/", 30s)); });
        session.cancelAll();
        QCOMPARE(waiting.get(), int(Kind::cancelled));
        release->set_value();
    }

private:
    QueuedServer m_server;
    HttpSession m_session;
};

static const TestClass<HttpSessionTest> httpSessionTest;
#include "HttpSessionTest.moc"
