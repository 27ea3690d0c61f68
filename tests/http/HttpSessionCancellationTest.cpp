#include "HttpFixture.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace palvera {
namespace {

using Connection = LoopbackServer::Connection;

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

TEST_F(HttpSessionCancellationTest, resetsTheConnectionSoThatNothingGoesOnFlowing)
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
}

TEST_F(HttpSessionCancellationTest, endsALookUpOfANameAtOnce)
{
    expectCutOff({.networkPath = m_path}, {.url = "http://slow.test/"},
                 [] { return slowNameAsked.try_acquire_for(10s); });
    slowNameLetGo.release(2);
}

TEST_F(HttpSessionCancellationTest, waitsNoLongerForANetwork)
{
    m_path->usable = false;
    expectCutOff({.networkPath = m_path}, {.url = "http://unknown.test/", .idleTimeout = 0ms},
                 [&] { return m_path->waitedFor.try_acquire_for(10s); });
}

/// Sends requests one after the other until it is told to stop, and counts those that fail.
Task<int> countFailures(HttpClient& client, HttpRequest request, const std::atomic<bool>& stop)
{
    int failures = 0;
    while (!stop) {
        auto response = co_await client.send(request);
        failures += response.status != 200;
    }
    co_return failures;
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
    auto failures =
        asio::co_spawn(asio::make_strand(m_pool),
                       countFailures(working, {.url = server.url("/"), .idleTimeout = 5s}, stop), asio::use_future);
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
    EXPECT_EQ(failures.get(), 0);
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

TEST_F(HttpSessionCancellationTest, leavesNothingBehindWhenThePoolIsStoppedInTheMiddle)
{
    Gate underWay(0);
    LoopbackServer server([&](Connection& connection) {
        connection.readHead();
        underWay.release();
        connection.waitForReset();
    });
    auto held = std::make_shared<int>();
    {
        asio::thread_pool pool(1);
        HttpSession session(pool.get_executor());
        HttpRequest request{.url = server.url("/")};
        request.onSent = [held](qint64) {};
        asio::co_spawn(pool, session.send(std::move(request)), [](std::exception_ptr, HttpResponse) {});
        ASSERT_TRUE(underWay.try_acquire_for(10s));
        pool.stop();
        pool.join();
    }
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace palvera
