#include "HttpFixture.h"

#include "files/FileError.h"
#include "http/EarlyAnswer.h"
#include "http/RequestWatch.h"
#include "support/ScopedVariable.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace palvera {
namespace {

using Connection = LoopbackServer::Connection;
using Kind = TransportError::Kind;

using HttpSessionFailureTest = HttpFixture;

TEST_F(HttpSessionFailureTest, tellsFailuresApartInWordsForTheUser)
{
    const auto afterTheHead = [](const QByteArray& text) {
        return [text](Connection& connection) {
            connection.readHead();
            if (!text.isEmpty())
                connection.write(text);
        };
    };
    const HttpRequest put{.method = "PUT", .url = {}, .body = patterned(8 << 20)};
    const auto expect = [&](const LoopbackServer& server, HttpRequest request, const QString& text) {
        request.url = server.url("/");
        expectFailure(request, Kind::broken, text, {.verifyPeer = false});
    };
    const TestCertificate certificate;
    expect(LoopbackServer(afterTheHead("")), {}, "The connection was lost.");
    expect(LoopbackServer(afterTheHead("")), put, "The connection was lost.");
    expect(LoopbackServer(afterTheHead(""), &certificate), put, "The connection was lost.");
    expect(LoopbackServer(afterTheHead("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345")), {},
           "The connection was lost.");
    expect(LoopbackServer(afterTheHead("SSH-2.0-hello\r\n")), {}, "The server's answer was not understood.");
    LoopbackServer impostor([](Connection& connection) { // whose word counts for nothing
        connection.write("AAAAAHTTP/1.1 403 No\r\nContent-Length: 9\r\n\r\n{\"a\":\"b\"}"); // for a record that is none
        connection.waitForReset();
    });
    expectFailure({.method = "POST", .url = "https" + impostor.url("/").sliced(4), .body = patterned(1000)}, Kind::tls,
                  "No encrypted connection to the server could be made.");
    expectFailure({.url = "http://127.0.0.1:1/"}, Kind::connect, "Could not connect to the server.");
    expectFailure({.url = "file:///etc/passwd"}, Kind::connect, "The address is not valid.");
}

TEST_F(HttpSessionFailureTest, usesTheEnvironmentsProxyForOtherMachinesAndTellsWhatItRefusesFromWhatItCannot)
{
    LoopbackServer helpful(answering([](const auto& request) { return answer("200 OK", "sees " + request.path()); }));
    LoopbackServer server(answering(answer("200 OK", "direct")));
    const ScopedVariable plain("http_proxy", helpful.url(""));
    EXPECT_EQ(send({.url = "http://far.test/x"}, {.networkPath = m_path}).body, "sees http://far.test/x");
    EXPECT_EQ(send({.url = server.url("/")}, {.networkPath = m_path}).body, "direct");
    const std::tuple<const char*, Kind, const char*> cases[] = {
        {"403 Forbidden", Kind::proxy, "The proxy refused the connection."},
        {"407 Who Are You", Kind::proxy, "The proxy asks for a name and a password."},
        {"502 Bad Gateway", Kind::connect, "The proxy could not reach the server."}};
    for (const auto& [said, kind, text] : cases) {
        LoopbackServer proxy(answering(answer(said)));
        const ScopedVariable named("https_proxy", proxy.url(""));
        expectFailure({.url = "https://unknown.test/"}, kind, text, {.networkPath = m_path});
    }
}

TEST_F(HttpSessionFailureTest, waitsForANetworkUnlessTheHostIsThisMachine)
{
    m_path->usable = false;
    LoopbackServer server(answering(answer("200 OK")));
    EXPECT_EQ(send({.url = server.url("/")}, {.networkPath = m_path}).status, 200);
    HttpRequest far{.url = "http://unknown.test/", .idleTimeout = 1ms};
    expectFailure(far, Kind::noNetwork, "There is no network connection.", {.networkPath = m_path});
    far.idleTimeout = 0ms; // for ever
    HttpSession session(executor(), {.networkPath = m_path});
    auto waiting = start(session, far);
    m_path->bringUp();
    EXPECT_THROW(waiting.wait(), TransportError);
    expectFailure(far, Kind::connect, "The server's name was not found.", {.networkPath = m_path});
}

TEST_F(HttpSessionFailureTest, countsInactivityEitherWayAndTheWholeRequest)
{
    PassingTime time;
    LoopbackServer server([&](Connection& connection) {
        const auto path = connection.readHead().path();
        if (path != "/halts")
            connection.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray(path == "/drips" ? "4" : "99") +
                             "\r\n\r\n");
        for (int i = 0; path == "/drips" && i < 4; ++i) {
            time.pass(50ms);
            connection.write("x");
            time.untilLookedAt();
        }
        while (connection.stay(5)) {
            time.pass(40ms);
            if (path == "/crawls")
                connection.write("x");
        }
    });
    const HttpSessionOptions options{.now = time.clock()};
    EXPECT_EQ(send({.url = server.url("/drips"), .idleTimeout = 120ms}, options).body.size(), 4); // 200 ms in all
    HttpRequest request{.url = server.url("/crawls"), .totalTimeout = 200ms};
    expectFailure(request, Kind::timedOut, "The request took longer than 0.2 seconds.", options);
    request.totalTimeout = 0s;
    expectFailure(request, Kind::timedOut, "The request took longer than 0.4 seconds.",
                  {.totalTimeout = 400ms, .now = time.clock()});
    request = {.url = server.url("/halts"), .idleTimeout = 120ms};
    expectFailure(request, Kind::idle, "No answer within 0.12 seconds.", options);
    request = {.method = "PUT", .url = request.url, .body = patterned(20 << 20), .idleTimeout = 120ms};
    expectFailure(request, Kind::idle, "No answer within 0.12 seconds.", options);
}

TEST_F(HttpSessionFailureTest, takesADrainingSendQueueForActivity)
{
    PassingTime time;
    LoopbackServer server(
        [&](Connection& connection) {
            auto length = connection.readHead().length();
            constexpr qint64 sip = 300'000;
            for (; length > sip; length -= sip) { // six times
                connection.discard(sip);
                time.untilLookedAt();
                time.pass(60ms);
            }
            connection.discard(length);
            connection.write(answer("200 OK"));
        },
        nullptr, 64 << 10);
    const auto body = patterned(2'000'000); // fits into the kernel's send queue as a whole
    std::vector<qint64> sent, acknowledged;
    HttpRequest request{.method = "PUT", .url = server.url("/"), .body = body, .idleTimeout = 150ms};
    request.onSent = [&](qint64 count, qint64 ofThese) {
        sent.push_back(count);
        acknowledged.push_back(ofThese);
    };
    auto options = HttpSessionOptions::storage();
    options.now = time.clock();
    EXPECT_EQ(send(std::move(request), options).status, 200);
    EXPECT_GT(std::ranges::count(sent, body.size()), 1) << "draining is reported with the count unchanged";
    const auto out = std::ranges::find(sent, body.size()) - sent.begin();
    EXPECT_LT(acknowledged[std::size_t(out)], body.size() / 2) << "most of it fills the queue only";
    EXPECT_TRUE(std::ranges::is_sorted(acknowledged));
    EXPECT_GT(acknowledged.back(), body.size() / 2);
}

TEST_F(HttpSessionFailureTest, refusesABodyBeyondItsLimitOrTheRoomOfItsSinkAndKeepsTheBeginningOfARefusal)
{
    const auto body = patterned(70'001);
    LoopbackServer server([&](Connection& connection) {
        const auto path = connection.readHead().path();
        const QByteArray status = path == "/refused" ? "503 Slow Down" : "200 OK";
        connection.write("HTTP/1.1 " + status + (path == "/announced" ? "\r\nContent-Length: 70001" : "") + "\r\n\r\n" +
                         body);
        while ((path == "/endless" || path == "/refused") && connection.stay(0))
            connection.write(body);
    });
    const auto refusal = send({.url = server.url("/refused")});
    EXPECT_EQ(refusal.status, 503);
    EXPECT_EQ(refusal.body, body.first(64 << 10));
    for (auto path : {"/announced", "/untold", "/endless"}) {
        const QString text = "The server's answer is too large.";
        Bytes small({}, 70'000), fitting({}, 70'001);
        expectFailure({.url = server.url(path), .answerLimit = 70'000}, Kind::tooLarge, text);
        expectFailure({.url = server.url(path), .sink = &small}, Kind::tooLarge, text);
        EXPECT_LE(small.bytes.size(), 70'000);
        if (path == std::string("/endless"))
            continue;
        EXPECT_EQ(send({.url = server.url(path), .answerLimit = 70'001}).body, body);
        EXPECT_EQ(send({.url = server.url(path), .sink = &fitting}).length, 70'001);
        EXPECT_EQ(fitting.bytes, body);
    }
}

TEST_F(HttpSessionFailureTest, endsWithWhatTheBodysSourceOrSinkThrows)
{
    struct : Bytes {
        using Bytes::Bytes;
        std::size_t read(qint64 offset, std::span<char> into) override
        {
            return offset < 500'000 ? Bytes::read(offset, into) : throw FileError("The disk was pulled out.");
        }
        void take(std::span<const char>) override { throw FileError("The disk was pulled out."); }
    } pulledOut(patterned(1'000'000), 10);
    LoopbackServer server(answering(answer("200 OK", "0123456789")));
    EXPECT_THROW(send({.method = "PUT", .url = server.url("/"), .source = &pulledOut}), FileError);
    EXPECT_THROW(send({.url = server.url("/"), .sink = &pulledOut}), FileError);
}

TEST_F(HttpSessionFailureTest, takesAnAnswerThatComesBeforeTheBodyIsThroughEvenIfThatIsCutShort)
{
    const TestCertificate certificate;
    Bytes source(patterned(8 << 20));
    auto options = HttpSessionOptions::storage();
    options.verifyPeer = false;
    for (const auto* encrypted : {static_cast<const TestCertificate*>(nullptr), &certificate}) {
        LoopbackServer server(
            [](Connection& connection) {
                const auto path = connection.readHead().path();
                connection.discard(1 << 20);
                connection.write(path == "/" ? answer("503 Slow Down", "later")
                                             : "HTTP/1.1 413 Too Much\r\nContent-Length: 1000\r\n\r\nno");
            }, // and closes with bytes unread, which resets the connection
            encrypted);
        for (int attempt = 0; attempt < 30; ++attempt) {
            const auto refusal = send({.method = "PUT", .url = server.url("/"), .source = &source}, options);
            EXPECT_EQ(refusal.status, 503) << (encrypted ? "encrypted" : "plain");
            EXPECT_EQ(refusal.body, "later");
        }
        EXPECT_EQ(send({.method = "PUT", .url = server.url("/cut"), .source = &source}, options).status, 413);
    }
    // In what a broken connection left unread.
    const QByteArray refusal = "HTTP/1.1 503 Slow Down\r\nRetry-After: 7\r\nContent-Length: 5\r\n\r\nlater";
    EXPECT_EQ(parseRefusal(refusal)->status, 503);
    EXPECT_EQ(parseRefusal(refusal)->header("retry-after"), "7");
    EXPECT_EQ(parseRefusal(refusal + "beyond")->body, "later");
    EXPECT_EQ(parseRefusal(refusal.chopped(2))->body, "lat");
    for (QByteArray other : {"", "HTTP/1.1 503 Slow Down\r\nRetry-After: 7\r\n", "HTTP/1.1 200 OK\r\n\r\n",
                             "HTTP/1.1 100 Continue\r\n\r\n", "HTTP/1.1\r\n\r\n", "nonsense 503\r\n\r\n"})
        EXPECT_FALSE(parseRefusal(other).has_value()) << other.constData();
}

using Verdict = RequestWatch::Verdict;

constexpr RequestWatch::Moment begun{};

TEST(RequestWatchTest, countsIdleFromTheLastMovementAndAllFromTheStartAndLooksJustInTimeForEither)
{
    RequestWatch watch(60s, 200s, begun);
    EXPECT_EQ(watch.verdict(begun + 60s - 1ns), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 60s), Verdict::idle);
    watch.moved(begun + 50s);
    EXPECT_EQ(watch.verdict(begun + 109s), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 110s), Verdict::idle);
    watch.moved(begun + 199s);
    EXPECT_EQ(watch.verdict(begun + 199s), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 200s), Verdict::timedOut);
    EXPECT_EQ(RequestWatch(0s, 0s, begun).verdict(begun + 1000h), Verdict::inTime);
    EXPECT_EQ(RequestWatch(0s, 0s, begun).nextLook(begun), begun + 1s) << "every second at the latest";
    EXPECT_EQ(RequestWatch(60s, 0s, begun).nextLook(begun), begun + 1s);
    EXPECT_EQ(RequestWatch(60s, 0s, begun).nextLook(begun + 59'700ms), begun + 60s);
    EXPECT_EQ(RequestWatch(60s, 500ms, begun).nextLook(begun), begun + 500ms);
    EXPECT_EQ(RequestWatch(100ms, 0s, begun).nextLook(begun), begun + 25ms);
}

struct HttpSessionCancellationTest : HttpFixture {
    /// Cuts a request off by its caller, and another by the end of its session, once each `isUnderWay`.
    void expectCutOff(const HttpSessionOptions& options, const HttpRequest& request,
                      const std::function<bool()>& isUnderWay)
    {
        for (bool bySession : {false, true}) {
            auto session = std::make_unique<HttpSession>(executor(), options);
            auto sending = start(*session, request);
            ASSERT_TRUE(isUnderWay());
            if (bySession)
                session.reset();
            else
                sending.cancel();
            EXPECT_TRUE(sending.wasCancelled());
        }
    }
};

TEST_F(HttpSessionCancellationTest, endsAWaitAtOnceAndResetsTheConnectionSoThatNothingGoesOnFlowing)
{
    Gate underWay(0), reset(0);
    LoopbackServer server([&](Connection& connection) {
        connection.readHead();
        connection.discard(100'000);
        underWay.release();
        if (connection.waitForReset())
            reset.release();
    });
    expectCutOff(HttpSessionOptions::storage(), {.method = "PUT", .url = server.url("/"), .body = patterned(20 << 20)},
                 [&] { return underWay.try_acquire_for(10s); });
    EXPECT_TRUE(reset.try_acquire_for(10s) && reset.try_acquire_for(10s));
    expectCutOff({.networkPath = m_path}, {.url = "http://slow.test/"},
                 [] { return slowNameAsked.try_acquire_for(10s); }); // its name is looked up
    slowNameLetGo.release(2);
    m_path->usable = false;
    expectCutOff({.networkPath = m_path}, {.url = "http://unknown.test/", .idleTimeout = 0ms},
                 [&] { return m_path->waitedFor.try_acquire_for(10s); });
}

TEST_F(HttpSessionCancellationTest, isSafeAtEveryMomentAndLeavesTheDescriptorsOfOtherSessionsAlone)
{
    LoopbackServer server([](Connection& connection) {
        if (connection.read().path() == "/stall")
            connection.waitForReset();
        else
            connection.write(answer("200 OK", {}, "Connection: close\r\n"));
    });
    HttpSession working(executor()), churning(executor());
    std::atomic<bool> stop = false;
    auto others = std::async(std::launch::async, [&] {
        while (!stop)
            EXPECT_EQ(send(working, {.url = server.url("/"), .idleTimeout = 5s}).status, 200);
    });
    for (int round = 0; round < 200; ++round) {
        auto stalled = start(churning, {.url = server.url("/stall")});
        auto answered = start(churning, {.method = "PUT", .url = server.url("/"), .body = "some bytes"});
        for (int turns = round % 40; turns > 0; --turns)
            std::this_thread::yield(); // before, within and after the making of the connection
        stalled.cancel();
        answered.cancel();
        EXPECT_TRUE(stalled.wasCancelled());
        answered.wasCancelled(); // or not
    }
    stop = true;
    others.get();
    EXPECT_EQ(send(churning, {.url = server.url("/")}).status, 200);
}

TEST_F(HttpSessionCancellationTest, failsTheRequestWhenDescriptorsRunOut)
{
#if __has_feature(undefined_behavior_sanitizer)
    GTEST_SKIP() << "the type checks of this sanitizer need descriptors themselves";
#endif
    LoopbackServer server(answering(answer("200 OK")));
    HttpSession session(executor());
    rlimit usual{};
    ::getrlimit(RLIMIT_NOFILE, &usual);
    const rlimit tight{.rlim_cur = 200, .rlim_max = usual.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &tight);
    std::vector<int> taken;
    for (int next = ::fcntl(0, F_DUPFD_CLOEXEC, 0); next >= 0; next = ::fcntl(0, F_DUPFD_CLOEXEC, 0))
        taken.push_back(next);
    for (int left : {0, 1}) { // none for the connection, or one for it but none for watching it
        EXPECT_THROW(send(session, {.url = server.url("/")}), TransportError) << left;
        ::close(taken.back());
        taken.pop_back();
    }
    std::ranges::for_each(taken, ::close);
    ::setrlimit(RLIMIT_NOFILE, &usual);
    EXPECT_EQ(send(session, {.url = server.url("/")}).status, 200);
}

} // namespace
} // namespace palvera
