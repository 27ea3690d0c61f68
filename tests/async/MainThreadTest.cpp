#include "async/MainThread.h"

#include "async/Failure.h"
#include "async/RunOn.h"
#include "support/LoopFixture.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <QScopeGuard>

namespace palvera {
namespace {

using namespace std::chrono_literals;
namespace asio = boost::asio;

const auto isHere = [mainThread = std::this_thread::get_id()] { return std::this_thread::get_id() == mainThread; };

std::atomic<int> resting = 0;

Task<int> rest(std::chrono::hours duration)
{
    ++resting;
    const auto over = qScopeGuard([] { --resting; });
    asio::steady_timer timer(co_await asio::this_coro::executor, duration);
    co_await timer.async_wait(asio::use_awaitable);
    co_return 7;
}

struct MainThreadTest : LoopFixture {
    asio::thread_pool pool{2};
    MainThread main{pool};
    asio::cancellation_signal stop;
    std::optional<std::exception_ptr> ended; // how what was started did

    ~MainThreadTest() override { pool.join(); }

    void start(Task<void> operation)
    {
        ended.reset();
        asio::co_spawn(main.executor(), std::move(operation),
                       asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr failure) { ended = failure; }));
    }
    bool hasEnded()
    {
        return pumpUntil([&] { return ended.has_value(); });
    }
};

TEST_F(MainThreadTest, runsWhatIsPostedInOrderAndWhatIsDispatchedThereAtOnceAndLetsOtherEventsThrough)
{
    std::vector<int> seen;
    for (int i = 1; i < 100; ++i)
        asio::post(main.executor(), [&seen, i] { seen.push_back(isHere() ? i : -1); });
    asio::dispatch(main.executor(), [&] { seen.push_back(0); });
    EXPECT_EQ(seen, std::vector{0});
    asio::post(pool, [&] { asio::post(main.executor(), [&] { seen.push_back(isHere() ? 100 : -1); }); });
    EXPECT_TRUE(pumpUntil([&] { return seen.size() == 101; }));
    EXPECT_TRUE(std::ranges::is_sorted(seen));

    bool stopped = false;
    std::function<void()> again = [&] {
        if (!stopped)
            asio::post(main.executor(), again);
    };
    again();
    QTimer::singleShot(0, [&] { stopped = true; });
    EXPECT_TRUE(pumpUntil([&] { return stopped; }));
}

TEST_F(MainThreadTest, destroysWhatComesAfterItsEndWithoutRunningIt)
{
    auto held = std::make_shared<bool>(false);
    {
        asio::thread_pool reactor{1};
        auto ending = std::make_unique<MainThread>(reactor);
        const auto executor = ending->executor();
        const auto note = [held] { *held = true; };
        asio::post(executor, note);
        asio::co_spawn(executor, rest(1h), [note](std::exception_ptr, int) { note(); }); // waits in the reactor
        ending.reset();
        asio::post(executor, note);
        EXPECT_EQ(held.use_count(), 3) << "this one's, `note`'s and the waiting one's";
        QCoreApplication::processEvents();
        reactor.stop();
    }
    EXPECT_FALSE(*held);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainThreadTest, hopsToAnEngineAndBackWithResultsAndFailures)
{
    static auto engine = [](bool fails) -> Task<int> {
        co_await rest(0h);
        EXPECT_FALSE(isHere());
        if (fails)
            throw Failure("The disk is full.");
        co_return 42;
    };
    static auto model = [](Executor strand) -> Task<void> {
        EXPECT_EQ(co_await runOn(strand, engine(false)), 42);
        EXPECT_TRUE(isHere());
        co_await rest(0h);
        EXPECT_TRUE(isHere());
        co_await runOn(strand, engine(true));
    };
    start(model(asio::make_strand(pool)));
    ASSERT_TRUE(hasEnded());
    EXPECT_EQ(describe(*ended), "The disk is full.");
}

TEST_F(MainThreadTest, aCancellationAtAnyMomentReachesTheOperationAndWaitsForItsEnd)
{
    static auto model = [](Executor strand, std::chrono::hours duration) -> Task<void> {
        EXPECT_EQ(co_await runOn(strand, rest(duration)), 7);
    };
    for (int i = 0; i < 500; ++i) {
        const bool endless = i % 10 == 0;
        start(model(asio::make_strand(pool), endless ? 1h : 0h));
        QCoreApplication::processEvents();
        for (int turns = i % 50; turns > 0; --turns)
            std::this_thread::yield();
        stop.emit(asio::cancellation_type::terminal);
        ASSERT_TRUE(hasEnded());
        EXPECT_TRUE(isCancellation(*ended) || (!endless && !*ended));
        EXPECT_EQ(resting, 0);
    }
}

} // namespace
} // namespace palvera
