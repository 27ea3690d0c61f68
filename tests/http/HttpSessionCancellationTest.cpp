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
