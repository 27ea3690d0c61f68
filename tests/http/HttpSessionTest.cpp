#include "HttpFixture.h"

#include "http/HttpAddress.h"
#include "http/NetworkThreads.h"
#include "http/Redirects.h"
#include "support/FakeHttpClient.h"
#include "support/ScopedVariable.h"
#include "support/Simulation.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>

namespace palvera {
namespace {

using Connection = LoopbackServer::Connection;
using Request = LoopbackServer::Request;
using testing::ElementsAre;

using HttpSessionTest = HttpFixture;

TEST_F(HttpSessionTest, sendsAddressAndBodyByteForByteAndNoHeaderBeyondWhatHttpNeedsWhateverWentBefore)
{
    Request seen;
    LoopbackServer server(answering([&](const Request& request) {
        seen = request;
        return answer("200 OK", seen.head.startsWith("HEAD") ? "" : "body");
    }));
    const QByteArray host = " /p HTTP/1.1\r\nHost: 127.0.0.1:" + QByteArray::number(server.port()) + "\r\n";
    Bytes source(patterned(3'000'001));
    const std::pair<HttpRequest, QByteArray> cases[] = {
        {{}, "Accept: */*\r\n\r\n"},
        {{.method = "DELETE", .url = {}, .headers = {{"Accept", "text/plain"}, {"X-Empty", ""}}},
         "Accept: text/plain\r\nX-Empty:\r\n\r\n"},
        {{.method = "PUT", .url = {}, .source = &source}, "Accept: */*\r\nContent-Length: 3000001\r\n\r\n"},
        {{.method = "POST", .url = {}, .body = source.bytes}, "Accept: */*\r\nContent-Length: 3000001\r\n\r\n"},
        {{.method = "HEAD"}, "Accept: */*\r\n\r\n"},
        {{.method = "POST"}, "Accept: */*\r\nContent-Length: 0\r\n\r\n"},
    };
    HttpSession session(executor());
    for (int round = 0; round < 2; ++round) {
        for (auto [request, headers] : cases) {
            request.url = server.url("/p");
            EXPECT_EQ(send(session, request).body, request.method == "HEAD" ? "" : "body");
            EXPECT_EQ(seen.head, request.method + host + headers);
            EXPECT_TRUE(seen.body == (request.source ? source.bytes : request.body)) << request.method.constData();
        }
    }
    for (QByteArray path : {"/a%2fb%2Fc", "/%7Eme/~me", "/a+b?c+d", "/a%20b", "/a/../b/./c//d", "/%2E%2e/x", "/?",
                            "/b/o.mov?partNumber=2&X-Sig=aB%2f%2F+~==&e=&%C3%BC"}) {
        send(session, {.url = server.url(path)});
        EXPECT_EQ(seen.path(), path);
    }
    EXPECT_EQ(server.connections(), 1);
}

TEST_F(HttpSessionTest, sendsOnlyWhatChangesNothingAgainWhenAKeptConnectionTurnsOutDead)
{
    for (const QByteArray method : {"GET", "HEAD", "POST", "PUT"}) {
        std::atomic<int> received = 0;
        LoopbackServer server([&](Connection& connection) {
            for (; !connection.read().head.isEmpty() && ++received != 2;) // the second ends without a word
                connection.write(answer("200 OK"));
        });
        HttpSession session(executor());
        send(session, {.url = server.url("/")});
        const HttpRequest request{.method = method, .url = server.url("/"), .body = method == "PUT" ? "part" : ""};
        const bool isHarmless = method == "GET" || method == "HEAD";
        if (isHarmless)
            EXPECT_EQ(send(session, request).status, 200);
        else
            EXPECT_THROW(send(session, request), TransportError);
        EXPECT_EQ(received, isHarmless ? 3 : 2) << method.constData();
    }
}

TEST_F(HttpSessionTest, sendsWhatChangesSomethingOnNoConnectionThatNobodyUsedForSeconds)
{
    LoopbackServer server(answering(answer("200 OK")));
    HttpSession session(executor());
    int connections = 0;
    const std::tuple<const char*, std::chrono::seconds, bool> requests[] = {
        {"POST", 0s, true}, {"POST", 2s, false}, {"GET", 30s, false}, {"POST", 5s, true}};
    for (const auto& [method, idle, isOpened] : requests) {
        elapse(idle);
        send(session, {.method = method, .url = server.url("/")});
        EXPECT_EQ(server.connections(), connections += isOpened) << method << " after " << idle.count();
    }
}

TEST_F(HttpSessionTest, takesAnyStatusAsAnAnswerAndUnpacksOnlyWhatItAskedForUpToTheLimitOfWhatComesOut)
{
    const QByteArray packed("\x1f\x8b\x08 not unpacked", 16);
    const auto deflated = [](qsizetype size) {
        const auto all = qCompress(QByteArray(size, 'x'), 9);
        return answer("200 OK", all.mid(4), "Content-Encoding: deflate\r\n"); // past the length that Qt puts before it
    };
    const std::map<QByteArray, QByteArray> answers{
        {"/deflated", deflated(4'000)},
        {"/bomb", deflated(4'000'000)},
        {"/moved", answer("302 Found", {}, "Location: /elsewhere\r\n")},
        {"/elsewhere", answer("200 OK")},
        {"/packed", answer("200 OK", packed, "Content-Encoding: gzip\r\n")},
        {"/early", "HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n" + answer("404 Not Found", "gone", "A: 1\r\n")},
        {"/chunked", "HTTP/1.1 500 No\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"},
    };
    QByteArray accepted;
    LoopbackServer server(answering([&](const Request& request) {
        accepted = request.header("Accept-Encoding");
        return answers.at(request.path());
    }));
    HttpRequest request{.url = server.url("/deflated"), .answerLimit = 1'000'000, .asksForCompression = true};
    EXPECT_EQ(send(request).body, QByteArray(4'000, 'x'));
    EXPECT_TRUE(accepted.contains("deflate"));
    request.url = server.url("/bomb");
    expectFailure(request, TransportError::Kind::tooLarge, "The server's answer is too large.");
    const auto moved = send({.url = server.url("/moved")});
    EXPECT_EQ(moved.status, 302);
    EXPECT_EQ(moved.header("location"), "/elsewhere");
    EXPECT_EQ(send({.url = server.url("/packed")}).body, packed);
    EXPECT_EQ(send({.url = server.url("/chunked")}).body, "abcde");
    Bytes sink({}, 10);
    const auto missing = send({.url = server.url("/early"), .sink = &sink});
    EXPECT_EQ(missing.status, 404);
    EXPECT_EQ(missing.body, "gone") << "the sink is for successes";
    EXPECT_THAT(missing.headers, ElementsAre(std::pair("A", "1"), std::pair("Content-Length", "4")));
}

TEST_F(HttpSessionTest, endsWithTheHeadersWhenTheBodyIsNotWanted)
{
    LoopbackServer server([](Connection& connection) {
        connection.readHead();
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 9000000000\r\nETag: \"one\"\r\n\r\nfirst bytes");
        connection.waitForReset();
    });
    const auto isWanted = [](const HttpResponse& head) {
        return head.status != 200 || head.header("ETag") != "\"one\"";
    };
    HttpSession session(executor());
    for (int number = 1; number <= 2; ++number) {
        const auto head = send(session, {.url = server.url("/"), .answerLimit = 10, .wantsBody = isWanted});
        EXPECT_EQ(head.header("Content-Length"), "9000000000");
        EXPECT_EQ(head.body, "");
        EXPECT_EQ(head.length, 0);
        EXPECT_EQ(server.connections(), number) << "the rest is still on the first";
    }
}

TEST_F(HttpSessionTest, keepsToItsNumberOfConnectionsAndWaitingForATurnIsNotInactivity)
{
    PassingTime time;
    Gate firstCame(0);
    LoopbackServer server(answering([&](const Request& request) {
        firstCame.release();
        for (int i = 0; request.path() == "/first" && i < 6; ++i) { // far longer than the others may be idle
            time.pass(50ms);
            time.untilLookedAt();
        }
        return answer("200 OK");
    }));
    HttpSession session(executor(), {.maxConnectionsPerHost = 1, .now = time.clock()});
    auto one = start(session, {.url = server.url("/first")});
    ASSERT_TRUE(firstCame.try_acquire_for(10s));
    auto two = start(session, {.url = server.url("/"), .idleTimeout = 100ms});
    auto three = start(session, {.url = server.url("/"), .idleTimeout = 100ms});
    for (auto* each : {&one, &two, &three})
        EXPECT_EQ(each->wait().status, 200);
    EXPECT_EQ(server.connections(), 1);
}

/// The name of the congestion control of this process's connections to `port`.
QByteArray congestionControlTowards(int port)
{
    char name[16] = {};
    for (int socket = 0; socket < 1024; ++socket) {
        sockaddr_in peer{};
        socklen_t length = sizeof peer, room = sizeof name;
        if (::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &length) == 0 && ntohs(peer.sin_port) == port)
            ::getsockopt(socket, IPPROTO_TCP, TCP_CONGESTION, name, &room);
    }
    return name;
}

TEST_F(HttpSessionTest, asksForACongestionControlAndKeepsTheKernelsWhereThatIsRefused)
{
    LoopbackServer server(answering(answer("200 OK")));
    const auto used = [&](HttpSessionOptions options) {
        HttpSession session(executor(), std::move(options));
        EXPECT_EQ(send(session, {.url = server.url("/")}).status, 200);
        return congestionControlTowards(server.port());
    };
    const auto usual = used({});
    ASSERT_NE(usual, "reno");
    EXPECT_EQ(used({.loopbackCongestionControl = "reno"}), "reno");
    EXPECT_EQ(used({.congestionControl = "reno", .loopbackCongestionControl = "no such thing"}), usual);
}

TEST_F(HttpSessionTest, missesNothingThatTlsHasReadAhead)
{
    // Many small records leave the server at once and stand in the TLS library when the socket is empty.
    const TestCertificate certificate;
    const auto body = patterned(3'000'000);
    LoopbackServer server(
        [&body](Connection& connection) {
            while (!connection.readHead().head.isEmpty()) {
                connection.write("HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n");
                for (qsizetype at = 0; at < body.size(); at += 700)
                    connection.write(body.mid(at, 700));
            }
        },
        &certificate);
    auto options = HttpSessionOptions::storage();
    options.verifyPeer = false;
    HttpSession session(executor(), options);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(send(session, {.url = server.url("/")}).body == body) << i;
}

TEST_F(HttpSessionTest, trustsOnlyCertificatesOfItsAuthoritiesAndEncryptsWithTheFastestSafeCipher)
{
    const TestCertificate certificate;
    LoopbackServer server([](Connection& connection) { connection.write(answer("200 OK", connection.cipher())); },
                          &certificate);
    HttpRequest request{.url = server.url("/")};
    EXPECT_EQ(send(request, {.authorities = certificate.file()}).body, "TLS_AES_128_GCM_SHA256");
    EXPECT_EQ(send(request, {.verifyPeer = false}).status, 200);
    const ScopedVariable bundle("CURL_CA_BUNDLE", {}), file("SSL_CERT_FILE", {});
    expectFailure(request, TransportError::Kind::untrusted, "The server's certificate is not trusted.");
    for (auto* variable : {"CURL_CA_BUNDLE", "SSL_CERT_FILE"}) {
        const ScopedVariable used(variable, certificate.file().toLocal8Bit());
        EXPECT_EQ(send(request).status, 200) << variable;
    }
    request.url.replace("127.0.0.1", "localhost"); // for which the certificate does not stand
    expectFailure(request, TransportError::Kind::untrusted, "The server's certificate is not trusted.",
                  {.authorities = certificate.file()});
    const TestCertificate oldStyle(TestCertificate::Named::byCommonName);
    LoopbackServer named(answering(answer("200 OK")), &oldStyle);
    expectFailure({.url = named.url("/")}, TransportError::Kind::untrusted, "The server's certificate is not trusted.",
                  {.authorities = oldStyle.file()});
}

const LoopbackServer* serverAtTheEnd = nullptr;

int statusAtTheEnd()
{
    asio::thread_pool pool(1);
    HttpSession session(pool.get_executor(), {.verifyPeer = false});
    return asio::co_spawn(pool, session.send({.url = serverAtTheEnd->url("/")}), asio::use_future).get().status;
}

/// Ends the program, and tells by its exit code whether a request is still answered after everything that was to happen
/// at its end.
void endWithARequest()
{
    std::atexit([] { std::_Exit(statusAtTheEnd() == 200 ? 0 : 1); }); // the first to be asked for is the last called
    HttpSession makesTheLibraryReady(asio::system_executor{});
    const TestCertificate certificate;
    LoopbackServer server(answering(answer("200 OK")), &certificate);
    serverAtTheEnd = &server;
    std::exit(statusAtTheEnd() == 200 ? 3 : 4);
}

TEST(HttpSessionAtTheEndTest, encryptsUntilTheVeryEndOfTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endWithARequest(), testing::ExitedWithCode(0), "");
}

TEST(NetworkThreadsTest, keepsEachSessionToOneThreadAndSpreadsThem)
{
    NetworkThreads threads(2);
    const auto threadOf = [](const Executor& executor) {
        return asio::post(executor, asio::use_future(&std::this_thread::get_id)).get();
    };
    auto first = threads.next(), second = threads.next(), third = threads.next();
    const auto usual = threadOf(first);
    EXPECT_FALSE(threadOf(second) == usual);
    for (int i = 0; i < 20; ++i) // it is the first one's turn again
        EXPECT_TRUE(threadOf(first) == usual && threadOf(third) == usual);
}

TEST(HttpAddressTest, onlyWhatCanBeAskedForIsAnAddressAndOnlyThisMachineIsLoopback)
{
    for (const char* usable : {"https://storage.example/a%2fb?sig=x+y~z", "http://127.0.0.1:8080/p"})
        EXPECT_TRUE(parseHttpAddress(usable)) << usable;
    for (const char* unusable : {"", "storage", "/only/a/path", "ftp://host/x", "file:///etc/passwd", "https://",
                                 "https://host/a b", "https://host/a\r\nX-Evil: 1", "javascript:alert(1)"})
        EXPECT_FALSE(parseHttpAddress(unusable)) << unusable;
    EXPECT_FALSE(parseHttpAddress(QByteArray("https://host/a\0b", 16))) << "the rest would be cut off";
    for (const char* here : {"http://localhost/", "http://LOCALHOST:80/", "http://api.localhost/", "http://127.0.0.1/",
                             "http://127.1.2.3:8080/x", "http://[::1]/"})
        EXPECT_TRUE(parseHttpAddress(here)->loopback) << here;
    for (const char* elsewhere :
         {"http://127.evil.example/", "http://127.0.0.1.evil.example/", "http://localhost.example/",
          "http://notlocalhost/", "http://128.0.0.1/", "http://[::2]/", "http://10.127.0.1/"})
        EXPECT_FALSE(parseHttpAddress(elsewhere)->loopback) << elsewhere;
}

using namespace std::chrono_literals;

TEST(RedirectsTest, anAnswerLeadsOnWhereItsStatusAndItsAddressSaySo)
{
    struct {
        int status;
        const char* location;
        std::optional<QByteArray> next;
    } const rows[]{{302, "https://b.test/x?y=%2F", "https://b.test/x?y=%2F"},
                   {301, "/other", "https://a.test/other"},
                   {303, "next#part", "https://a.test/folder/next"},
                   {307, "//b.test/x", "https://b.test/x"},
                   {308, "http://b.test/", "http://b.test/"},
                   {302, "file:///etc/passwd", {}},
                   {302, "https://", {}},
                   {302, "", {}},
                   {300, "/other", {}},
                   {304, "/other", {}},
                   {200, "/other", {}}};
    for (const auto& [status, location, next] : rows)
        EXPECT_EQ(redirectOf({.status = status, .headers = {{"Location", location}}}, "https://a.test/folder/file"),
                  next)
            << status << " " << location;
}

TEST(FollowingTest, goesOnFiveTimesWithinTheTimeThatThereIsForAllOfItToAllowedAddressesAlone)
{
    Simulation world;
    FakeHttpClient client{world.clock};
    const auto get = [&](const QByteArray& url) {
        return world.run(sendFollowing(client, world.clock, {.url = url, .totalTimeout = 15s},
                                       [](const QByteArray& each) { return each.startsWith("https:"); }));
    };
    client.latency = 2s;
    client.handler = [](const HttpRequest& request) -> HttpResponse { // each leads to the one below, 0 to none
        const int left = request.url.mid(request.url.lastIndexOf('/') + 1).toInt();
        if (left == 0)
            return {.status = 200, .body = "here"};
        return {.status = 302, .headers = {{"Location", QByteArray::number(left - 1)}}};
    };
    EXPECT_EQ(get("https://a.test/5").body, "here");
    EXPECT_EQ(client.requests().back().totalTimeout, 5s);
    EXPECT_THROW(get("https://a.test/6"), TransportError);
    EXPECT_EQ(client.requests().size(), 12u);
    EXPECT_THROW(get("http://a.test/"), TransportError);
    client.handler = [](const HttpRequest&) -> HttpResponse {
        return {.status = 302, .headers = {{"Location", "http://a.test/"}}};
    };
    EXPECT_THROW(get("https://a.test/"), TransportError);
    EXPECT_EQ(client.requests().size(), 13u);
}

} // namespace
} // namespace palvera
