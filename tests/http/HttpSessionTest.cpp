#include "HttpFixture.h"
#include "files/FileError.h"
#include "http/TransportError.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace palvera {

namespace {

using namespace std::chrono_literals;
using Connection = LoopbackServer::Connection;
using testing::ElementsAre;
using testing::StartsWith;

using HttpSessionTest = HttpFixture;

/// Sets, or with a null value unsets, a variable of the environment for a while.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const QByteArray& value) : m_name(name), m_usual(qgetenv(name)) { set(value); }
    ~ScopedVariable() { set(m_usual); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void set(const QByteArray& value) { value.isNull() ? qunsetenv(m_name) : qputenv(m_name, value); }

    const char* m_name;
    QByteArray m_usual;
};

/// The name of the congestion control of this process's connections to `port`.
QByteArray congestionControlTowards(int port)
{
    for (int socket = 0; socket < 1024; ++socket) {
        sockaddr_in peer{};
        socklen_t length = sizeof peer;
        if (::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &length) != 0 || ntohs(peer.sin_port) != port)
            continue;
        char name[16] = {};
        length = sizeof name;
        ::getsockopt(socket, IPPROTO_TCP, TCP_CONGESTION, name, &length);
        return name;
    }
    return {};
}

TEST_F(HttpSessionTest, sendsTheAddressByteForByte)
{
    LoopbackServer server([](Connection& connection) {
        auto head = connection.readHead();
        connection.write(answer("200 OK", head.first(head.indexOf("\r\n"))));
    });
    for (QByteArray path : {"/a%2fb%2Fc", "/%7Eme/~me", "/a+b?c+d", "/a%20b", "/a/../b/./c//d", "/%2E%2e/x", "/?",
                            "/b/o.mov?partNumber=2&X-Sig=aB%2f%2F+~==&e=&%C3%BC"})
        EXPECT_EQ(send({.url = server.url(path)}).body, "GET " + path + " HTTP/1.1");
}

TEST_F(HttpSessionTest, putsTheBodyOfASuccessWhereItIsToldTo)
{
    LoopbackServer server([](Connection& connection) {
        auto path = connection.readHead().split(' ').at(1);
        connection.write(answer(path == "/gone" ? "404 Not Found" : "206 Partial Content", "0123456789"));
    });
    BytesSink sink(10);
    auto refused = send({.url = server.url("/gone"), .sink = &sink});
    EXPECT_EQ(refused.body, "0123456789");
    EXPECT_EQ(refused.length, 10);
    EXPECT_EQ(sink.bytes, "");
    auto taken = send({.url = server.url("/"), .sink = &sink});
    EXPECT_EQ(taken.body, "");
    EXPECT_EQ(taken.length, 10);
    EXPECT_EQ(sink.bytes, "0123456789");
}

TEST_F(HttpSessionTest, endsWithTheHeadersWhenTheBodyIsNotWanted)
{
    std::atomic<int> connections = 0;
    LoopbackServer server([&](Connection& connection) {
        ++connections;
        connection.readHead();
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 9000000000\r\nETag: \"one\"\r\n\r\nfirst bytes");
        connection.waitForReset();
    });
    auto isWanted = [](const HttpResponse& head) { return head.status != 200 || head.header("ETag") != "\"one\""; };
    for (int number = 1; number <= 2; ++number) {
        auto head = send({.url = server.url("/"), .answerLimit = 10, .wantsBody = isWanted});
        EXPECT_EQ(head.status, 200);
        EXPECT_EQ(head.header("Content-Length"), "9000000000");
        EXPECT_EQ(head.body, "");
        EXPECT_EQ(head.length, 0);
        EXPECT_EQ(connections, number);
    }
}

TEST_F(HttpSessionTest, sendsNoHeaderBeyondWhatHttpNeedsAndTheRequestNames)
{
    LoopbackServer server([](Connection& connection) {
        auto head = connection.readHead();
        connection.readBody(headerOf(head, "Content-Length").toLongLong());
        connection.write(answer("200 OK", head));
    });
    auto host = "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n";
    auto headSeen = [&](HttpRequest request) {
        request.url = server.url("/p");
        return send(std::move(request)).body.toStdString();
    };
    EXPECT_EQ(headSeen({}), "GET /p HTTP/1.1\r\n" + host + "Accept: */*\r\n\r\n");
    EXPECT_EQ(headSeen({.method = "DELETE", .headers = {{"Accept", "text/plain"}, {"X-Empty", ""}}}),
              "DELETE /p HTTP/1.1\r\n" + host + "Accept: text/plain\r\nX-Empty:\r\n\r\n");
    EXPECT_EQ(headSeen({.method = "PUT", .body = patternedBody(2'000'000)}),
              "PUT /p HTTP/1.1\r\n" + host + "Accept: */*\r\nContent-Length: 2000000\r\n\r\n");
    EXPECT_EQ(headSeen({.method = "POST"}), "POST /p HTTP/1.1\r\n" + host + "Accept: */*\r\nContent-Length: 0\r\n\r\n");
}

TEST_F(HttpSessionTest, sendsBodiesWholeAndReportsWhatHasLeft)
{
    const auto body = patternedBody(3'000'001);
    QByteArray received;
    LoopbackServer server([&](Connection& connection) {
        auto head = connection.readHead();
        received = connection.readBody(headerOf(head, "Content-Length").toLongLong());
        connection.write(answer("200 OK"));
    });
    BytesSource source(body);
    for (auto* streamed : {static_cast<BodySource*>(nullptr), static_cast<BodySource*>(&source)}) {
        std::vector<qint64> sent;
        HttpRequest request{.method = "PUT", .url = server.url("/"), .source = streamed};
        request.onSent = [&](qint64 count) { sent.push_back(count); };
        if (!streamed)
            request.body = body;
        EXPECT_EQ(send(std::move(request), HttpSessionOptions::storage()).status, 200);
        EXPECT_TRUE(received == body);
        EXPECT_TRUE(std::ranges::is_sorted(sent));
        EXPECT_EQ(sent.back(), body.size());
    }
}

TEST_F(HttpSessionTest, givesWhatTheBodysSourceThrewToTheCaller)
{
    struct Unreadable final : BytesSource {
        using BytesSource::BytesSource;
        std::size_t read(qint64 offset, std::span<char> into) override
        {
            if (offset >= 500'000)
                throw FileError(QStringLiteral("The disk was pulled out."));
            return BytesSource::read(offset, into.first(std::min<std::size_t>(into.size(), 100'000)));
        }
    } source(patternedBody(1'000'000));
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); });
    EXPECT_THROW(send({.method = "PUT", .url = server.url("/"), .source = &source}), FileError);
}

TEST_F(HttpSessionTest, sendsTheBodyAgainFromTheStartWhenAKeptConnectionTurnsOutDead)
{
    const auto body = patternedBody(300'000);
    std::atomic<int> connections = 0;
    QByteArray received;
    LoopbackServer server([&](Connection& connection) {
        bool isFirst = connections++ == 0;
        received = connection.readBody(headerOf(connection.readHead(), "Content-Length").toLongLong());
        connection.write(answer("200 OK"));
        if (isFirst && !connection.readHead().isEmpty())
            connection.discard(body.size()); // takes the second request and leaves without a word
    });
    HttpSession session(executor());
    BytesSource source(body);
    send(session, {.method = "PUT", .url = server.url("/1"), .body = "x"});
    EXPECT_EQ(send(session, {.method = "PUT", .url = server.url("/2"), .source = &source}).status, 200);
    EXPECT_EQ(connections, 2);
    EXPECT_TRUE(received == body);
}

TEST_F(HttpSessionTest, takesAnyStatusAsAnAnswerAndLeavesItAsItCame)
{
    const QByteArray packed("\x1f\x8b\x08 not unpacked", 16);
    LoopbackServer server([&](Connection& connection) {
        auto path = connection.readHead().split(' ').at(1);
        if (path == "/moved")
            connection.write(answer("302 Found", {}, "Location: /elsewhere\r\n"));
        else if (path == "/packed")
            connection.write(answer("200 OK", packed, "Content-Encoding: gzip\r\n"));
        else if (path == "/early")
            connection.write("HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n" +
                             answer("404 Not Found", "gone", "A: 1\r\n"));
        else if (path == "/chunked")
            connection.write("HTTP/1.1 500 No\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n");
        else
            connection.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
    });
    auto moved = send({.url = server.url("/moved")});
    EXPECT_EQ(moved.status, 302);
    EXPECT_EQ(moved.header("location"), "/elsewhere");
    auto unpacked = send({.url = server.url("/packed")});
    EXPECT_EQ(unpacked.body, packed);
    auto missing = send({.url = server.url("/early")});
    EXPECT_EQ(missing.status, 404);
    EXPECT_EQ(missing.body, "gone");
    EXPECT_THAT(missing.headers, ElementsAre(std::pair("A", "1"), std::pair("Content-Length", "4")));
    EXPECT_TRUE(missing.header("Link").isNull());
    EXPECT_EQ(send({.url = server.url("/chunked")}).body, "abcde");
    EXPECT_EQ(send({.method = "HEAD", .url = server.url("/head")}).status, 200);
}

TEST_F(HttpSessionTest, keepsToItsNumberOfConnectionsAndWaitingForATurnIsNotInactivity)
{
    PassingTime time;
    Gate firstCame;
    LoopbackServer server([&](Connection& connection) {
        connection.readHead();
        firstCame.open();
        for (int i = 0; i < 6; ++i) { // far longer than the others may be idle
            time.pass(50ms);
            time.untilLookedAt();
        }
        time.pass(99ms);
        connection.write(answer("200 OK"));
        connection.answerAll(answer("200 OK"));
    });
    HttpSession session(executor(), {.maxConnectionsPerHost = 1, .now = time.clock()});
    auto one = start(session, {.url = server.url("/1")});
    ASSERT_TRUE(firstCame.wait());
    auto two = start(session, {.url = server.url("/2"), .idleTimeout = 100ms});
    auto three = start(session, {.url = server.url("/3"), .idleTimeout = 100ms});
    EXPECT_EQ(one.wait().status, 200);
    EXPECT_EQ(two.wait().status, 200);
    EXPECT_EQ(three.wait().status, 200);
    EXPECT_EQ(server.connections(), 1);
}

TEST_F(HttpSessionTest, asksForACongestionControlAndKeepsTheKernelsWhereThatIsRefused)
{
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); });
    auto used = [&](HttpSessionOptions options) {
        HttpSession session(executor(), std::move(options));
        EXPECT_EQ(send(session, {.url = server.url("/")}).status, 200);
        return congestionControlTowards(server.port());
    };
    const auto usual = used({});
    ASSERT_NE(usual, "reno");
    EXPECT_EQ(used({.loopbackCongestionControl = "reno"}), "reno");
    EXPECT_EQ(used({.congestionControl = "reno"}), usual) << "meant for other machines";
    EXPECT_EQ(used({.loopbackCongestionControl = "no such thing"}), usual);
}

TEST_F(HttpSessionTest, leavesNoTraceOfARequestInTheNextOverTheSameConnection)
{
    LoopbackServer server([](Connection& connection) {
        for (auto head = connection.readHead(); !head.isEmpty(); head = connection.readHead()) {
            connection.discard(headerOf(head, "Content-Length").toLongLong());
            connection.write(head.startsWith("HEAD") ? answer("200 OK") : answer("200 OK", head));
        }
    });
    HttpSession session(executor());
    const auto plain = send(session, {.url = server.url("/")}).body;
    BytesSource source(patternedBody(100'000));
    for (HttpRequest before : {HttpRequest{.method = "PUT", .url = server.url("/"), .source = &source},
                               HttpRequest{.method = "POST", .url = server.url("/"), .headers = {{"X", "1"}}},
                               HttpRequest{.method = "HEAD", .url = server.url("/")},
                               HttpRequest{.method = "DELETE", .url = server.url("/")}}) {
        EXPECT_EQ(send(session, before).status, 200);
        EXPECT_EQ(send(session, {.url = server.url("/")}).body, plain) << "after " << before.method.constData();
    }
    EXPECT_EQ(server.connections(), 1);
}

TEST_F(HttpSessionTest, encryptsWithTheFastestCipherThatIsSafe)
{
    TestCertificate certificate;
    LoopbackServer server(
        [](Connection& connection) {
            connection.readHead();
            connection.write(answer("200 OK", connection.cipher()));
        },
        {.certificate = &certificate});
    EXPECT_EQ(send({.url = server.url("/")}, {.verifyPeer = false}).body, "TLS_AES_128_GCM_SHA256");
}

TEST_F(HttpSessionTest, missesNothingThatTlsHasReadAhead)
{
    // Many small records leave the server at once and stand in the TLS library when the socket is empty.
    TestCertificate certificate;
    const auto body = patternedBody(3'000'000);
    LoopbackServer server(
        [&body](Connection& connection) {
            while (!connection.readHead().isEmpty()) {
                connection.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n");
                for (qsizetype at = 0; at < body.size(); at += 700)
                    connection.write(body.mid(at, 700));
            }
        },
        {.certificate = &certificate});
    auto options = HttpSessionOptions::storage();
    options.verifyPeer = false;
    HttpSession session(executor(), options);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(send(session, {.url = server.url("/")}).body == body) << i;
    EXPECT_EQ(server.connections(), 1);
}

TEST_F(HttpSessionTest, trustsOnlyCertificatesOfItsAuthorities)
{
    TestCertificate certificate;
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); },
                          {.certificate = &certificate});
    HttpRequest request{.method = "PUT", .url = server.url("/"), .body = patternedBody(300'000)};
    EXPECT_EQ(send(request, {.authorities = certificate.certificateFile()}).status, 200);
    EXPECT_EQ(send(request, {.verifyPeer = false}).status, 200);
    expectFailure(request, TransportError::Kind::tls, "The server's certificate is not trusted.");
    for (auto* variable : {"CURL_CA_BUNDLE", "SSL_CERT_FILE"}) {
        ScopedVariable bundle("CURL_CA_BUNDLE", {}), file("SSL_CERT_FILE", {});
        ScopedVariable used(variable, certificate.certificateFile().toLocal8Bit());
        EXPECT_EQ(send(request).status, 200) << variable;
    }
    LoopbackServer plain([](Connection& connection) { connection.write(answer("400 Bad Request")); });
    request.url = "https" + plain.url("/").sliced(4);
    expectFailure(request, TransportError::Kind::tls, "No encrypted connection to the server could be made.");
}

const LoopbackServer* serverAtTheEnd = nullptr;

int statusAtTheEnd()
{
    boost::asio::thread_pool pool(1);
    HttpSession session(pool.get_executor(), {.verifyPeer = false});
    auto sending = session.send({.url = serverAtTheEnd->url("/")});
    return boost::asio::co_spawn(pool, std::move(sending), boost::asio::use_future).get().status;
}

/// Ends the program, and tells by its exit code whether a request is still answered after everything that was to happen
/// at its end.
void endWithARequest()
{
    std::atexit([] { std::_Exit(statusAtTheEnd() == 200 ? 0 : 1); }); // the first to be asked for is the last called
    HttpSession makesTheLibraryReady(boost::asio::system_executor{});
    TestCertificate certificate;
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); },
                          {.certificate = &certificate});
    serverAtTheEnd = &server;
    std::exit(statusAtTheEnd() == 200 ? 3 : 4);
}

TEST(HttpSessionAtTheEndTest, encryptsUntilTheVeryEndOfTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endWithARequest(), testing::ExitedWithCode(0), "");
}

TEST_F(HttpSessionTest, usesTheEnvironmentsProxyForOtherMachinesOnly)
{
    LoopbackServer proxy([](Connection& connection) {
        auto head = connection.readHead();
        connection.write(answer("200 OK", "proxy saw " + head.first(head.indexOf("\r\n"))));
    });
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK", "direct")); });
    ScopedVariable variable("http_proxy", proxy.url(""));
    auto path = std::make_shared<FakeNetworkPath>(executor());
    path->bringUp();
    auto far = send({.url = "http://far.test/x"}, {.networkPath = path});
    auto near = send({.url = server.url("/")}, {.networkPath = path});
    EXPECT_EQ(far.body, "proxy saw GET http://far.test/x HTTP/1.1");
    EXPECT_EQ(near.body, "direct");
}

} // namespace

} // namespace palvera
