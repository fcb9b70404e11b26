#include "HttpSession.h"
#include "QueuedServer.h"
#include "TestCertificates.h"
#include "TestTexts.h"

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
    void requestsReachTheServerByteForByte();
    void compressedAnswersAreUnpackedWithinTheLimit();
    void whatCannotBeSentIsRefused_data();
    void whatCannotBeSentIsRefused();
    void badAnswersEndInAnError_data();
    void badAnswersEndInAnError();
    void nobodyListens();
    void redirectsStayWithinTheOrigin_data();
    void redirectsStayWithinTheOrigin();
    void aRedirectThatLoopsEnds();
    void onlyTrustedServersAreSpokenTo_data();
    void onlyTrustedServersAreSpokenTo();
    void connectionsAreKept();
    void aHangingRequestDelaysNoOther();
    void cancellingEndsEveryWait();
    void requestsSentTogetherRunSideBySide();
    void theFirstFailureEndsTheOthers();
    void proxiesAreTheDesktops();
    void aProxyLookUpThatHangsEndsInTime();
    void sentencesAreOursForEveryKind();

private:
    QueuedServer m_server;
    HttpSession m_session;
};

void HttpSessionTest::requestsReachTheServerByteForByte()
{
    m_server.reset();
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

void HttpSessionTest::compressedAnswersAreUnpackedWithinTheLimit()
{
    const auto deflated = [](const QByteArray &text) {
        return QueuedAnswer::reply(200, qCompress(text).sliced(4), {{"Content-Encoding", "deflate"}});
    };
    m_server.reset();
    m_server.enqueue(deflated("{\"kettle\": true}"));
    QCOMPARE(m_session.send(get(m_server.origin() + "/")).body, QByteArray("{\"kettle\": true}"));
    m_server.enqueue(deflated(QByteArray(64 << 20, ' '))); // 64 KB on the wire
    QVERIFY(outcomeOf(m_session, get(m_server.origin() + "/")) != answered);
}

void HttpSessionTest::whatCannotBeSentIsRefused_data()
{
    const QByteArray origin = m_server.origin();
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("line break in a header") << origin + "/" << QByteArray("secret\r\nX-Injected: 1");
    QTest::newRow("line feed alone") << origin + "/" << QByteArray("secret\nX-Injected: 1");
    QTest::newRow("NUL in a header") << origin + "/" << QByteArray("sec\0ret", 7);
    QTest::newRow("line break in the URL") << origin + "/?key=a\r\nX-Injected: 1" << QByteArray("k");
    QTest::newRow("space in the URL") << origin + "/?key=a b" << QByteArray("k");
    QTest::newRow("raw non-ASCII in the URL") << origin + "/?key=鑰" << QByteArray("k");
    QTest::newRow("another protocol") << QByteArray("file:///etc/passwd") << QByteArray("k");
    QTest::newRow("no host") << QByteArray("http:///v1") << QByteArray("k");
    QTest::newRow("no URL") << QByteArray() << QByteArray("k");
}

void HttpSessionTest::whatCannotBeSentIsRefused()
{
    QFETCH(QByteArray, url);
    QFETCH(QByteArray, key);
    m_server.reset();
    HttpRequest request = get(url);
    request.headers = {{"X-Key", key}};
    QCOMPARE(outcomeOf(m_session, request), int(Kind::invalidRequest));
    QVERIFY(m_server.requests().isEmpty());
}

void HttpSessionTest::badAnswersEndInAnError_data()
{
    const QByteArray head = "HTTP/1.1 200 OK\r\n";
    const auto endless = [](const QByteArray &start, const QByteArray &piece, std::chrono::milliseconds interval) {
        return QueuedAnswer{.bytes = start, .repeated = piece, .interval = interval};
    };
    QTest::addColumn<QueuedAnswer>("answer");
    QTest::addColumn<int>("outcome");
    QTest::newRow("no HTTP") << QueuedAnswer::raw("220 mail.example ESMTP\r\n") << int(Kind::notHttp);
    QTest::newRow("hangs up at once") << QueuedAnswer::raw("") << int(Kind::connectionLost);
    QTest::newRow("hangs up in the head") << QueuedAnswer::raw("HTTP/1.1 20") << int(Kind::connectionLost);
    QTest::newRow("hangs up in the body")
        << QueuedAnswer::raw(head + "Content-Length: 10\r\n\r\nhalf") << int(Kind::connectionLost);
    QTest::newRow("hangs up within a chunk")
        << QueuedAnswer::raw(head + "Transfer-Encoding: chunked\r\n\r\n8\r\nhalf") << int(Kind::connectionLost);
    QTest::newRow("never answers") << QueuedAnswer::never() << int(Kind::timedOut);
    QTest::newRow("trickles its body") << endless(head + "Content-Length: 1000\r\n\r\n", "x", 20ms)
                                       << int(Kind::timedOut);
    QTest::newRow("trickles its head") << endless(head, "X: y\r\n", 20ms) << int(Kind::timedOut);
    QTest::newRow("endless headers") << endless(head, QByteArray("X-Filler: ") + QByteArray(1000, 'x') + "\r\n", 0ms)
                                     << int(Kind::answerTooLarge);
    QTest::newRow("one endless header") << endless(head + "X: ", QByteArray(10'000, 'x'), 0ms)
                                        << int(Kind::answerTooLarge);
    QTest::newRow("endless interim answers")
        << endless("", "HTTP/1.1 100 Continue\r\nX: " + QByteArray(1000, 'x') + "\r\n\r\n", 0ms)
        << int(Kind::answerTooLarge);
    QTest::newRow("endless body") << endless(head + "\r\n", QByteArray(100'000, ' '), 0ms) << int(Kind::answerTooLarge);
    QTest::newRow("endless chunks") << endless(head + "Transfer-Encoding: chunked\r\n\r\n",
                                               "ffff\r\n" + QByteArray(0xffff, ' ') + "\r\n", 0ms)
                                    << int(Kind::answerTooLarge);
    QTest::newRow("16 MiB are taken") << QueuedAnswer::reply(200, QByteArray(HttpSession::largestBody, ' '))
                                      << answered;
    QTest::newRow("a byte more is not") << QueuedAnswer::reply(200, QByteArray(HttpSession::largestBody + 1, ' '))
                                        << int(Kind::answerTooLarge);
    QTest::newRow("no body") << QueuedAnswer::raw("HTTP/1.1 204 No Content\r\n\r\n") << answered;
}

void HttpSessionTest::badAnswersEndInAnError()
{
    QFETCH(QueuedAnswer, answer);
    QFETCH(int, outcome);
    m_server.reset();
    m_server.enqueue(answer);
    QElapsedTimer clock;
    clock.start();
    const auto timeout = outcome == int(Kind::timedOut) ? 300ms : 10s;
    QCOMPARE(outcomeOf(m_session, get(m_server.origin() + "/", timeout)), outcome);
    QVERIFY(clock.elapsed() < 5000);
}

void HttpSessionTest::nobodyListens()
{
    QByteArray origin;
    {
        const QueuedServer gone;
        origin = gone.origin();
    }
    QCOMPARE(outcomeOf(m_session, get(origin + "/")), int(Kind::cannotConnect));
}

void HttpSessionTest::redirectsStayWithinTheOrigin_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QByteArray>("method"); // of the second request; empty where none follows
    const QByteArray origin = m_server.origin();
    QTest::newRow("relative, method kept") << 307 << QByteArray("/there?x=1") << QByteArray("POST");
    QTest::newRow("absolute, method kept") << 308 << origin + "/there?x=1" << QByteArray("POST");
    QTest::newRow("found becomes a GET") << 302 << QByteArray("/there?x=1") << QByteArray("GET");
    QTest::newRow("another host") << 307 << m_server.origin("localhost") + "/there?x=1" << QByteArray();
    QTest::newRow("another port") << 307 << QByteArray("http://127.0.0.1:1/there") << QByteArray();
    QTest::newRow("another scheme") << 307 << "https://127.0.0.1:" + QByteArray::number(m_server.port()) + "/there"
                                    << QByteArray();
    QTest::newRow("a file") << 302 << QByteArray("file:///etc/passwd") << QByteArray();
    QTest::newRow("nowhere") << 302 << QByteArray() << QByteArray();
}

void HttpSessionTest::redirectsStayWithinTheOrigin()
{
    QFETCH(int, status);
    QFETCH(QByteArray, location);
    QFETCH(QByteArray, method);
    m_server.reset();
    m_server.enqueue(QueuedAnswer::reply(status, "moved", {{"Location", location}}));
    m_server.enqueue(QueuedAnswer::reply(200, "there"));
    const HttpResponse response = m_session.send({.method = "POST",
                                                  .url = m_server.origin() + "/here",
                                                  .headers = {{"Content-Type", "text/plain"}, {"X-Key", "k"}},
                                                  .body = "text"});
    const auto requests = m_server.requests();
    if (method.isEmpty()) {
        QCOMPARE(requests.size(), 1);
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

void HttpSessionTest::aRedirectThatLoopsEnds()
{
    m_server.reset();
    for (int i = 0; i < 10; ++i)
        m_server.enqueue(QueuedAnswer::reply(307, "", {{"Location", "/again"}}));
    QCOMPARE(m_session.send(get(m_server.origin() + "/")).status, 307);
    QCOMPARE(m_server.requests().size(), 1 + HttpSession::mostRedirects);
}

void HttpSessionTest::onlyTrustedServersAreSpokenTo_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<bool>("knowsAuthority");
    QTest::addColumn<int>("outcome");
    QTest::newRow("ours") << u"here"_s << true << answered;
    QTest::newRow("expired") << u"expired"_s << true << int(Kind::certificate);
    QTest::newRow("another host's") << u"elsewhere"_s << true << int(Kind::certificate);
    QTest::newRow("an authority that the system doesn't know") << u"here"_s << false << int(Kind::certificate);
}

void HttpSessionTest::onlyTrustedServersAreSpokenTo()
{
    QFETCH(QString, certificate);
    QFETCH(bool, knowsAuthority);
    QFETCH(int, outcome);
    QueuedServer server(serverCertificate(certificate));
    server.respondWith([](const ReceivedRequest &) { return QueuedAnswer::json("{}"); });
    const HttpSession session(
        {.certificateFile = knowsAuthority ? certificateFile(u"authority.pem"_s) : QString(), .proxies = {}});
    QCOMPARE(outcomeOf(session, get(server.origin() + "/")), outcome);
    QCOMPARE(server.requests().size(), outcome == answered ? 1 : 0);
    if (outcome == answered) {
        session.send(get(server.origin() + "/"));
        QCOMPARE(server.connectionCount(), 1);
        server.respondWith([&](const ReceivedRequest &) {
            return QueuedAnswer::reply(302, "",
                                       {{"Location", "http://127.0.0.1:" + QByteArray::number(server.port())}});
        });
        QCOMPARE(session.send(get(server.origin() + "/")).status, 302);
    }
}

void HttpSessionTest::connectionsAreKept()
{
    QueuedServer server;
    server.respondWith([](const ReceivedRequest &) { return QueuedAnswer::json("{}"); });
    for (int i = 0; i < 3; ++i)
        QCOMPARE(outcomeOf(m_session, get(server.origin() + "/")), answered);
    QCOMPARE(std::async(std::launch::async, [&] { return outcomeOf(m_session, get(server.origin() + "/")); }).get(),
             answered);
    QCOMPARE(server.connectionCount(), 1);
}

void HttpSessionTest::aHangingRequestDelaysNoOther()
{
    m_server.reset();
    m_server.enqueue(QueuedAnswer::never());
    m_server.enqueue(QueuedAnswer::json("{}"));
    auto hanging =
        std::async(std::launch::async, [&] { return outcomeOf(m_session, get(m_server.origin() + "/", 1s)); });
    QVERIFY(m_server.waitForRequests(1));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(outcomeOf(m_session, get(m_server.origin() + "/")), answered);
    QVERIFY(clock.elapsed() < 500);
    QCOMPARE(hanging.get(), int(Kind::timedOut));
}

void HttpSessionTest::cancellingEndsEveryWait()
{
    HttpSession session;
    m_server.reset();
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
    QVERIFY(clock.elapsed() < 200);
    QCOMPARE(outcomeOf(session, get(m_server.origin() + "/")), int(Kind::cancelled));
    QCOMPARE(m_server.requests().size(), 3);
}

void HttpSessionTest::requestsSentTogetherRunSideBySide()
{
    m_server.reset();
    m_server.respondWith([](const ReceivedRequest &request) {
        QueuedAnswer answer = QueuedAnswer::json(request.target);
        answer.afterRequests = 3; // nobody is answered before all are there
        return answer;
    });
    const QByteArray origin = m_server.origin();
    QList<QByteArray> answers(3);
    m_session.sendTogether({get(origin + "/0"), get(origin + "/1"), get(origin + "/2")},
                           [&](qsizetype i, const HttpResponse &response) { answers[i] = response.body; });
    m_server.respondWith({});
    QCOMPARE(answers, (QList<QByteArray>{"/0", "/1", "/2"}));
}

void HttpSessionTest::theFirstFailureEndsTheOthers()
{
    m_server.reset();
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

void HttpSessionTest::proxiesAreTheDesktops()
{
    m_server.reset();
    m_server.respondWith([](const ReceivedRequest &request) {
        return request.method == "CONNECT" ? QueuedAnswer::reply(403, "") : QueuedAnswer::json("{}");
    });
    QList<QUrl> asked; // on the look-up's thread, which has ended when the request has
    const HttpSession session(
        {.certificateFile = {}, .proxies = [&](const QUrl &url) {
             asked.append(url);
             return QList{QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, m_server.port(), u"me"_s, u"pass"_s)};
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

void HttpSessionTest::aProxyLookUpThatHangsEndsInTime()
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

void HttpSessionTest::sentencesAreOursForEveryKind()
{
    const TestTexts texts;
    QStringList sentences;
    for (int kind = int(Kind::timedOut); kind <= int(Kind::other); ++kind) {
        const Failure failure = TransportError(Kind(kind)).failure(texts.manager);
        QCOMPARE(failure.code, kind);
        sentences.append(failure.description);
    }
    QCOMPARE(sentences.removeDuplicates(), 0);
}

QTEST_GUILESS_MAIN(HttpSessionTest)
#include "HttpSessionTest.moc"
