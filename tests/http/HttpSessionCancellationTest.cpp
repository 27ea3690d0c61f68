#include "HttpFixture.h"
#include "http/TransportError.h"

#include <boost/asio/detached.hpp>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace palvera {

namespace {

using namespace std::chrono_literals;
using Connection = LoopbackServer::Connection;
namespace asio = boost::asio;

using HttpSessionCancellationTest = HttpFixture;

/// Lets a moment pass that is too short for a timer.
void spin(std::chrono::microseconds duration)
{
    auto until = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < until)
        std::this_thread::yield();
}

TEST_F(HttpSessionCancellationTest, resetsTheConnectionSoThatNothingGoesOnFlowing)
{
    for (bool bySession : {false, true}) {
        Gate underWay, ended;
        std::atomic<bool> reset = false;
        LoopbackServer server([&](Connection& connection) {
            connection.readHead();
            connection.discard(100'000);
            underWay.open();
            reset = connection.waitForReset();
            ended.open();
        });
        auto session = std::make_unique<HttpSession>(executor(), HttpSessionOptions::storage());
        auto sending = start(*session, {.method = "PUT", .url = server.url("/"), .body = patternedBody(20 << 20)});
        ASSERT_TRUE(underWay.wait());
        if (bySession)
            session.reset();
        else
            sending.cancel();
        EXPECT_TRUE(sending.wasCancelled());
        ASSERT_TRUE(ended.wait());
        EXPECT_TRUE(reset);
    }
}

TEST_F(HttpSessionCancellationTest, endsALookUpOfANameAtOnce)
{
    auto path = std::make_shared<FakeNetworkPath>(executor());
    path->bringUp();
    HttpSession session(executor(), {.networkPath = path});
    auto sending = start(session, {.url = "http://slow.test/"});
    ASSERT_TRUE(names::asked().wait());
    sending.cancel();
    EXPECT_TRUE(sending.wasCancelled());
    names::letGo().open();
}

TEST_F(HttpSessionCancellationTest, endsAConnectionAttemptAtOnce)
{
    // A listener whose queue is full leaves further attempts without an answer.
    int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), length), 0);
    ASSERT_EQ(::listen(listener, 0), 0);
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    std::vector<int> queued;
    for (int i = 0; i < 4; ++i) {
        queued.push_back(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        ::connect(queued.back(), reinterpret_cast<sockaddr*>(&address), sizeof address);
    }
    const auto url = "http://127.0.0.1:" + QByteArray::number(ntohs(address.sin_port)) + "/";
    HttpSession session(executor());
    EXPECT_THROW(send(session, {.url = url, .idleTimeout = 50ms}), TransportError);
    auto sending = start(session, {.url = url});
    sending.cancel();
    EXPECT_TRUE(sending.wasCancelled());
    for (int socket : queued)
        ::close(socket);
    ::close(listener);
}

TEST_F(HttpSessionCancellationTest, isSafeAtEveryMoment)
{
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); });
    HttpSession session(executor());
    int answered = 0;
    int cancelled = 0;
    for (int i = 0; i < 300; ++i) {
        auto sending = start(session, {.method = "PUT", .url = server.url("/"), .body = "some bytes"});
        spin(i * 3us);
        sending.cancel();
        ++(sending.wasCancelled() ? cancelled : answered);
    }
    EXPECT_EQ(answered + cancelled, 300);
    EXPECT_EQ(send(session, {.url = server.url("/")}).status, 200);
}

/// Sends short requests over ever new connections until told to stop, and counts those that fail.
Task<int> countFailures(HttpClient& client, HttpRequest request, int requests)
{
    int failures = 0;
    for (int i = 0; i < requests; ++i) {
        auto response = co_await client.send(request);
        failures += response.status != 200;
    }
    co_return failures;
}

TEST_F(HttpSessionCancellationTest, leavesTheDescriptorsOfOtherSessionsAlone)
{
    LoopbackServer server([](Connection& connection) {
        if (connection.readHead().contains("/stall"))
            connection.waitForReset();
        else
            connection.write(answer("200 OK", {}, "Connection: close\r\n"));
    });
    HttpSession working(executor()), churning(executor());
    auto failures =
        asio::co_spawn(asio::make_strand(m_pool),
                       countFailures(working, {.url = server.url("/"), .idleTimeout = 5s}, 300), asio::use_future);
    int rounds = 0;
    for (; failures.wait_for(0s) != std::future_status::ready; ++rounds) {
        auto stalled = start(churning, {.url = server.url("/stall")});
        spin((rounds % 40) * 20us); // before, within and after the making of the connection
        stalled.cancel();
        EXPECT_TRUE(stalled.wasCancelled());
    }
    EXPECT_EQ(failures.get(), 0);
    EXPECT_GT(rounds, 10);
}

/// Uses up the process's descriptors but for `left` of them.
class DescriptorsTaken {
public:
    explicit DescriptorsTaken(std::size_t left)
    {
        ::getrlimit(RLIMIT_NOFILE, &m_usual);
        rlimit tight{.rlim_cur = 200, .rlim_max = m_usual.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &tight);
        for (int next = ::fcntl(0, F_DUPFD_CLOEXEC, 0); next >= 0; next = ::fcntl(0, F_DUPFD_CLOEXEC, 0))
            m_taken.push_back(next);
        for (; left > 0; --left) {
            ::close(m_taken.back());
            m_taken.pop_back();
        }
    }
    ~DescriptorsTaken()
    {
        for (int descriptor : m_taken)
            ::close(descriptor);
        ::setrlimit(RLIMIT_NOFILE, &m_usual);
    }
    DescriptorsTaken(const DescriptorsTaken&) = delete;
    DescriptorsTaken& operator=(const DescriptorsTaken&) = delete;

private:
    rlimit m_usual{};
    std::vector<int> m_taken;
};

TEST_F(HttpSessionCancellationTest, failsTheRequestWhenDescriptorsRunOut)
{
#if __has_feature(undefined_behavior_sanitizer)
    GTEST_SKIP() << "the type checks of this sanitizer need descriptors themselves";
#endif
    LoopbackServer server([](Connection& connection) { connection.answerAll(answer("200 OK")); });
    HttpSession session(executor());
    for (std::size_t left : {0, 1}) { // none for the connection, or one for it but none for watching it
        DescriptorsTaken taken(left);
        EXPECT_THROW(send(session, {.url = server.url("/")}), TransportError) << left;
    }
    EXPECT_EQ(send(session, {.url = server.url("/")}).status, 200);
}

TEST_F(HttpSessionCancellationTest, leavesNothingBehindWhenThePoolIsStoppedInTheMiddle)
{
    Gate underWay;
    LoopbackServer server([&](Connection& connection) {
        connection.readHead();
        underWay.open();
        connection.waitForReset();
    });
    auto held = std::make_shared<int>();
    {
        asio::thread_pool pool(1);
        HttpSession session(pool.get_executor());
        HttpRequest request{.url = server.url("/")};
        request.onSent = [held](qint64) {};
        asio::co_spawn(pool, session.send(std::move(request)), [](std::exception_ptr, HttpResponse) {});
        ASSERT_TRUE(underWay.wait());
        pool.stop();
        pool.join();
    }
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace

} // namespace palvera
