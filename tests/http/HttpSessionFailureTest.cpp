#include "HttpFixture.h"

#include "files/FileError.h"
#include "http/EarlyAnswer.h"
#include "http/TransportError.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace palvera {

namespace {

using namespace std::chrono_literals;
using Connection = LoopbackServer::Connection;
using Kind = TransportError::Kind;
using Now = std::chrono::steady_clock;

using HttpSessionFailureTest = HttpFixture;

TEST_F(HttpSessionFailureTest, tellsFailuresApartInWordsForTheUser)
{
    LoopbackServer cutsOff([](Connection& connection) { connection.readHead(); });
    expectFailure({.url = cutsOff.url("/")}, Kind::broken, "The connection was lost.");
    expectFailure({.method = "PUT", .url = cutsOff.url("/"), .body = patternedBody(8 << 20)}, Kind::broken,
                  "The connection was lost.");
    TestCertificate certificate;
    LoopbackServer cutsOffEncrypted([](Connection& connection) { connection.readHead(); },
                                    {.certificate = &certificate});
    expectFailure({.method = "PUT", .url = cutsOffEncrypted.url("/"), .body = patternedBody(8 << 20)}, Kind::broken,
                  "The connection was lost.", {.verifyPeer = false});
    LoopbackServer stopsShort([](Connection& connection) {
        connection.readHead();
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
    });
    expectFailure({.url = stopsShort.url("/")}, Kind::broken, "The connection was lost.");
    LoopbackServer speaksOtherwise([](Connection& connection) {
        connection.readHead();
        connection.write("SSH-2.0-hello\r\n");
    });
    expectFailure({.url = speaksOtherwise.url("/")}, Kind::broken, "The server's answer was not understood.");
    expectFailure({.url = "http://127.0.0.1:1/"}, Kind::connect, "Could not connect to the server.");
    for (QByteArray url :
         {"", "no address", "ftp://127.0.0.1/", "http://", "file:///etc/passwd", "http://127.0.0.1/a b"})
        expectFailure({.url = url}, Kind::connect, "The address is not valid.");
}

TEST_F(HttpSessionFailureTest, failsAtOnceForAnUnknownHostWhenThereIsANetwork)
{
    auto path = std::make_shared<FakeNetworkPath>(executor());
    path->bringUp();
    expectFailure({.url = "http://unknown.test/"}, Kind::connect, "The server's name was not found.",
                  {.networkPath = path});
}

TEST_F(HttpSessionFailureTest, waitsForANetworkUnlessTheHostIsThisMachine)
{
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); });
    auto path = std::make_shared<FakeNetworkPath>(executor());
    EXPECT_EQ(send({.url = server.url("/")}, {.networkPath = path}).status, 200);
    HttpRequest far{.url = "http://unknown.test/", .idleTimeout = 30ms};
    expectFailure(far, Kind::noNetwork, "There is no network connection.", {.networkPath = path});
    far.idleTimeout = 0ms; // for ever
    HttpSession session(executor(), {.networkPath = path});
    auto waiting = start(session, far);
    path->bringUp();
    EXPECT_THROW(waiting.wait(), TransportError); // now that it asks, nobody knows the host
}

TEST_F(HttpSessionFailureTest, waitsForANetworkNoLongerThanItsCallerOrItsSession)
{
    for (bool bySession : {false, true}) {
        auto path = std::make_shared<FakeNetworkPath>(executor());
        auto session = std::make_unique<HttpSession>(executor(), HttpSessionOptions{.networkPath = path});
        auto waiting = start(*session, {.url = "http://unknown.test/", .idleTimeout = 0ms});
        ASSERT_TRUE(path->waitedFor.wait());
        if (bySession)
            session.reset();
        else
            waiting.cancel();
        EXPECT_TRUE(waiting.wasCancelled());
    }
}

TEST_F(HttpSessionFailureTest, countsInactivityEitherWay)
{
    PassingTime time;
    LoopbackServer server([&](Connection& connection) {
        auto path = connection.readHead().split(' ').at(1);
        if (path == "/drips") {
            connection.write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n");
            for (int i = 0; i < 4; ++i) {
                time.pass(50ms);
                connection.write("x");
                time.untilLookedAt();
            }
        } else if (path == "/halts") {
            connection.write("HTTP/1.1 200 OK\r\nContent-Length: 12\r\n\r\nxxx");
        }
        while (connection.stay(5))
            time.pass(40ms);
    });
    const QString text = QStringLiteral("No answer within 0.12 seconds.");
    const HttpSessionOptions options{.now = time.clock()};
    EXPECT_EQ(send({.url = server.url("/drips"), .idleTimeout = 120ms}, options).body.size(), 4); // 200 ms in all
    expectFailure({.url = server.url("/silent"), .idleTimeout = 120ms}, Kind::idle, text, options);
    expectFailure({.url = server.url("/halts"), .idleTimeout = 120ms}, Kind::idle, text, options);
    expectFailure(
        {.method = "PUT", .url = server.url("/takesNothing"), .body = patternedBody(20 << 20), .idleTimeout = 120ms},
        Kind::idle, text, options);
}

TEST_F(HttpSessionFailureTest, takesADrainingSendQueueForActivity)
{
    PassingTime time;
    LoopbackServer server(
        [&](Connection& connection) {
            auto length = headerOf(connection.readHead(), "Content-Length").toLongLong();
            constexpr qint64 sip = 300'000;
            for (; length > sip; length -= sip) { // six times
                connection.discard(sip);
                time.untilLookedAt();
                time.pass(60ms);
            }
            connection.discard(length);
            connection.write(answer("200 OK"));
        },
        {.receiveBuffer = 64 << 10});
    const auto body = patternedBody(2'000'000); // fits into the kernel's send queue as a whole
    std::vector<qint64> sent;
    HttpRequest request{.method = "PUT", .url = server.url("/"), .body = body, .idleTimeout = 150ms};
    request.onSent = [&](qint64 count) { sent.push_back(count); };
    auto options = HttpSessionOptions::storage();
    options.now = time.clock();
    EXPECT_EQ(send(std::move(request), options).status, 200);
    EXPECT_GT(std::ranges::count(sent, body.size()), 1) << "draining is reported with the count unchanged";
}

TEST_F(HttpSessionFailureTest, endsARequestThatTakesTooLongAsAWhole)
{
    PassingTime time;
    LoopbackServer server([&](Connection& connection) {
        connection.readHead();
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        while (connection.stay(5)) {
            time.pass(10ms);
            connection.write("x");
        }
    });
    const QString text = QStringLiteral("The request took longer than 0.1 seconds.");
    expectFailure({.url = server.url("/"), .totalTimeout = 100ms}, Kind::timedOut, text, {.now = time.clock()});
    expectFailure({.url = server.url("/")}, Kind::timedOut, text, {.totalTimeout = 100ms, .now = time.clock()});
}

TEST_F(HttpSessionFailureTest, refusesAnAnswerBeyondTheLimit)
{
    LoopbackServer server([](Connection& connection) {
        auto path = connection.readHead().split(' ').at(1);
        if (path == "/announced")
            return connection.write(answer("200 OK", patternedBody(1001)));
        connection.write("HTTP/1.1 200 OK\r\n\r\n" + patternedBody(1001));
        while (path == "/endless" && connection.stay(0))
            connection.write(patternedBody(10'000));
    });
    const QString text = QStringLiteral("The server's answer is too large.");
    for (auto path : {"/announced", "/untold", "/endless"})
        expectFailure({.url = server.url(path), .answerLimit = 1000}, Kind::tooLarge, text);
    for (auto path : {"/announced", "/untold"})
        EXPECT_EQ(send({.url = server.url(path), .answerLimit = 1001}).body.size(), 1001);
}

TEST_F(HttpSessionFailureTest, refusesABodyThatItsSinkHasNoRoomFor)
{
    LoopbackServer server([](Connection& connection) {
        auto path = connection.readHead().split(' ').at(1);
        connection.write(
            (path == "/announced" ? "HTTP/1.1 200 OK\r\nContent-Length: 70001\r\n\r\n" : "HTTP/1.1 200 OK\r\n\r\n") +
            patternedBody(70001));
    });
    for (auto path : {"/announced", "/untold"}) {
        BytesSink small(70000), fitting(70001);
        expectFailure({.url = server.url(path), .sink = &small}, Kind::tooLarge,
                      QStringLiteral("The server's answer is too large."));
        EXPECT_LE(small.bytes.size(), 70000);
        EXPECT_EQ(send({.url = server.url(path), .sink = &fitting}).length, 70001);
        EXPECT_TRUE(fitting.bytes == patternedBody(70001)) << path;
    }
}

TEST_F(HttpSessionFailureTest, endsWithWhatItsSinkThrows)
{
    struct FullSink final : BodySink {
        qint64 room() const override { return 10; }
        void take(std::span<const char>) override { throw FileError("no memory"); }
    } sink;
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK", "0123456789")); });
    EXPECT_THROW(send({.url = server.url("/"), .sink = &sink}), FileError);
}

TEST_F(HttpSessionFailureTest, takesAnAnswerThatComesBeforeTheBodyIsThrough)
{
    TestCertificate certificate;
    for (bool encrypted : {false, true}) {
        LoopbackServer server(
            [](Connection& connection) {
                connection.readHead();
                connection.discard(1 << 20);
                connection.write(answer("503 Slow Down", "later"));
            }, // and closes with bytes unread, which resets the connection
            {.certificate = encrypted ? &certificate : nullptr});
        auto options = HttpSessionOptions::storage();
        options.verifyPeer = false;
        BytesSource source(patternedBody(8 << 20));
        for (int attempt = 0; attempt < 30; ++attempt) {
            auto refusal = send({.method = "PUT", .url = server.url("/"), .source = &source}, options);
            EXPECT_EQ(refusal.status, 503) << (encrypted ? "encrypted" : "plain");
            EXPECT_EQ(refusal.body, "later");
        }
    }
}

TEST_F(HttpSessionFailureTest, takesTheStatusOfARefusalThatIsItselfCutShort)
{
    LoopbackServer server([](Connection& connection) {
        connection.readHead();
        connection.discard(100'000);
        connection.write("HTTP/1.1 413 Too Much\r\nContent-Length: 1000\r\n\r\nno");
    });
    for (int attempt = 0; attempt < 10; ++attempt)
        EXPECT_EQ(send({.method = "PUT", .url = server.url("/"), .body = patternedBody(8 << 20)}).status, 413);
}

TEST_F(HttpSessionFailureTest, findsARefusalInWhatABrokenConnectionLeftUnread)
{
    const QByteArray refusal = "HTTP/1.1 503 Slow Down\r\nRetry-After: 7\r\nContent-Length: 5\r\n\r\nlater";
    EXPECT_EQ(parseRefusal(refusal)->status, 503);
    EXPECT_EQ(parseRefusal(refusal)->header("retry-after"), "7");
    EXPECT_EQ(parseRefusal(refusal + "beyond")->body, "later");
    EXPECT_EQ(parseRefusal(refusal.chopped(2))->body, "lat");
    for (QByteArray other : {"", "HTTP/1.1 503 Slow Down\r\nRetry-After: 7\r\n", "HTTP/1.1 200 OK\r\n\r\n",
                             "HTTP/1.1 100 Continue\r\n\r\n", "HTTP/1.1\r\n\r\n", "nonsense 503\r\n\r\n"})
        EXPECT_FALSE(parseRefusal(other).has_value()) << other.constData();
}

} // namespace

} // namespace palvera
