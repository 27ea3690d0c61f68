#include "async/MainThread.h"

#include "async/Failure.h"
#include "async/RunOn.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/thread_pool.hpp>

#include <QCoreApplication>
#include <QTimer>

#include <gmock/gmock.h>

namespace palvera {

namespace {

using namespace std::chrono_literals;
namespace asio = boost::asio;

class MainThreadTest : public testing::Test {
protected:
    ~MainThreadTest() override { m_pool.join(); }

    static bool isHere() { return std::this_thread::get_id() == mainThread; }
    /// Runs the event loop until `reached` holds, for ten seconds at most.
    static void runUntil(const std::function<bool()>& reached)
    {
        QTimer wakes; // the loop sleeps until there is an event
        wakes.start(10s);
        auto end = std::chrono::steady_clock::now() + 10s;
        while (!reached() && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_TRUE(reached());
    }
    /// Runs `operation` on the main thread to its end and gives its failure.
    std::exception_ptr run(Task<void> operation)
    {
        std::optional<std::exception_ptr> ended;
        asio::co_spawn(m_main.executor(), std::move(operation), [&](std::exception_ptr failure) { ended = failure; });
        runUntil([&] { return ended.has_value(); });
        return ended.value_or(nullptr);
    }

    static inline const std::thread::id mainThread = std::this_thread::get_id();
    static inline int argc = 1;
    static inline char name[] = "async_test";
    static inline char* argv[] = {name, nullptr};
    QCoreApplication m_application{argc, argv};
    asio::thread_pool m_pool{2};
    MainThread m_main{m_pool};
};

Task<void> rest(std::chrono::microseconds duration)
{
    asio::steady_timer timer(co_await asio::this_coro::executor, duration);
    co_await timer.async_wait(asio::use_awaitable);
}

TEST_F(MainThreadTest, runsWhatIsPostedInOrderFromTheEventLoop)
{
    std::vector<int> seen;
    for (int i = 0; i < 100; ++i)
        asio::post(m_main.executor(), [&seen, i] { seen.push_back(isHere() ? i : -1); });
    EXPECT_TRUE(seen.empty());
    asio::post(m_pool, [&] { asio::post(m_main.executor(), [&] { seen.push_back(isHere() ? 100 : -1); }); });
    runUntil([&] { return seen.size() == 101; });
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_EQ(seen.front(), 0);
}

TEST_F(MainThreadTest, runsWhatIsDispatchedThereAtOnce)
{
    bool ran = false;
    asio::dispatch(m_main.executor(), [&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST_F(MainThreadTest, letsOtherEventsThroughBetweenWorkThatKeepsComing)
{
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop)
            asio::post(m_main.executor(), again);
    };
    again();
    QTimer::singleShot(0, [&] { stop = true; });
    runUntil([&] { return stop; });
}

TEST_F(MainThreadTest, destroysWhatComesAfterItsEndWithoutRunningIt)
{
    auto held = std::make_shared<bool>(false);
    {
        asio::thread_pool reactor{1};
        auto main = std::make_unique<MainThread>(reactor);
        auto executor = main->executor();
        asio::post(executor, [held] { *held = true; });
        asio::co_spawn(executor, rest(1h), [held](std::exception_ptr) { *held = true; }); // waits in the reactor
        main.reset();
        EXPECT_EQ(held.use_count(), 2);
        asio::post(executor, [held] { *held = true; });
        EXPECT_EQ(held.use_count(), 2);
        QCoreApplication::processEvents();
        reactor.stop();
    }
    EXPECT_FALSE(*held);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainThreadTest, hopsToAnEngineAndBackWithResultsAndFailures)
{
    static auto engine = [](bool fails) -> Task<int> {
        EXPECT_FALSE(isHere());
        co_await rest(1ms);
        EXPECT_FALSE(isHere());
        if (fails)
            throw Failure(QStringLiteral("The disk is full."));
        co_return 42;
    };
    static auto model = [](Executor strand) -> Task<void> {
        EXPECT_TRUE(isHere());
        EXPECT_EQ(co_await runOn(strand, engine(false)), 42);
        EXPECT_TRUE(isHere());
        co_await rest(1ms);
        EXPECT_TRUE(isHere());
        co_await runOn(strand, engine(true));
    };
    EXPECT_EQ(describe(run(model(asio::make_strand(m_pool)))), "The disk is full.");
}

TEST_F(MainThreadTest, passesACancellationOnAndWaitsForTheOperationToEnd)
{
    static std::atomic<bool> started, cleaned;
    started = cleaned = false;
    static auto engine = []() -> Task<void> {
        struct Cleaning {
            ~Cleaning() { cleaned = true; }
        } cleaning;
        started = true;
        co_await rest(1h);
    };
    static auto model = [](Executor strand) -> Task<void> { co_await runOn(strand, engine()); };
    asio::cancellation_signal stop;
    std::optional<std::exception_ptr> ended;
    asio::co_spawn(m_main.executor(), model(asio::make_strand(m_pool)),
                   asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr failure) { ended = failure; }));
    QCoreApplication::processEvents();
    while (!started)
        std::this_thread::yield();
    stop.emit(asio::cancellation_type::terminal);
    EXPECT_FALSE(ended.has_value());
    runUntil([&] { return ended.has_value(); });
    EXPECT_TRUE(isCancellation(*ended));
    EXPECT_TRUE(cleaned);
}

TEST_F(MainThreadTest, survivesCancellationsThatMeetTheCompletion)
{
    static auto engine = [](std::chrono::microseconds duration) -> Task<int> {
        co_await rest(duration);
        co_return 7;
    };
    static auto model = [](Executor strand, std::chrono::microseconds duration) -> Task<int> {
        co_return co_await runOn(strand, engine(duration));
    };
    int completed = 0;
    int cancelled = 0;
    for (int i = 0; i < 500; ++i) {
        asio::cancellation_signal stop;
        bool ended = false;
        asio::co_spawn(m_main.executor(), model(asio::make_strand(m_pool), i % 10 == 0 ? 1h : 0h),
                       asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr failure, int value) {
                           EXPECT_TRUE(failure ? isCancellation(failure) : value == 7);
                           ++(failure ? cancelled : completed);
                           ended = true;
                       }));
        QCoreApplication::processEvents();
        auto until = std::chrono::steady_clock::now() + std::chrono::nanoseconds(i * 200);
        while (std::chrono::steady_clock::now() < until)
            std::this_thread::yield();
        stop.emit(asio::cancellation_type::terminal);
        runUntil([&] { return ended; });
    }
    EXPECT_EQ(completed + cancelled, 500);
    EXPECT_GE(cancelled, 50);
}

} // namespace

} // namespace palvera
