#include "platform/CancelFlag.h"
#include "transfer/SendWatcher.h"

#include "platform/TaskGroup.h"
#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

Task<void> moveEvery(std::chrono::seconds pause, int times, SendWatcher& watcher, Clock& clock)
{
    for (int i = 1; i <= times; ++i) {
        co_await clock.sleep(pause);
        watcher.progressed(i);
    }
}

TEST(StallTest, isNoticedBetweenTwentyAndTwentyTwoSecondsAfterTheLastMove)
{
    Simulation world;
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    world.start(moveEvery(15s, 4, *watcher, world.clock)); // moves until 60 s
    EXPECT_THROW(world.run(watchStall(watcher, 100, world.clock)), Stalled);
    EXPECT_EQ(world.clock.elapsed(), 82s);
}

TEST(StallTest, aBodyThatIsOutMayWaitForItsAnswer)
{
    Simulation world;
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    watcher->progressed(100);
    world.start(watchStall(watcher, 100, world.clock));
    world.runUntil([&] { return world.clock.elapsed() > 120s; });
}

TEST(StallTest, drainingWithoutProgressOfTheCountIsMovement)
{
    Simulation world;
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    watcher->progressed(50);
    for (int i = 0; i < 10; ++i) {
        world.clock.advance(15s);
        watcher->progressed(50);
    }
    EXPECT_EQ(world.clock.now() - watcher->state().moved, 0s);
}

struct CancelFlagTest : testing::Test {
    Simulation world;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();

    Task<void> stopAfter(std::chrono::seconds wait)
    {
        co_await world.clock.sleep(wait);
        flag->stop();
    }
};

TEST_F(CancelFlagTest, stopCutsTheOperationOffAtOnce)
{
    world.start(stopAfter(5s));
    std::exception_ptr failure = world.run(outcomeOf(runUntilStopped(flag, world.clock.sleep(100s)))).failure;
    EXPECT_TRUE(isCancellation(failure));
    EXPECT_EQ(world.clock.elapsed(), 5s);
}

TEST_F(CancelFlagTest, aFlagStoppedBeforehandLetsNothingRun)
{
    flag->stop();
    flag->stop();
    EXPECT_TRUE(isCancellation(world.run(outcomeOf(runUntilStopped(flag, world.clock.sleep(100s)))).failure));
    EXPECT_EQ(world.clock.elapsed(), 0s);
}

TEST_F(CancelFlagTest, withoutAStopTheOperationsOwnEndCounts)
{
    world.run(runUntilStopped(flag, world.clock.sleep(3s)));
    EXPECT_EQ(world.clock.elapsed(), 3s);
    auto fail = []() -> Task<void> {
        throw FileError("gone");
        co_return;
    };
    EXPECT_EQ(describe(world.run(outcomeOf(runUntilStopped(flag, fail()))).failure), "gone");
}

TEST_F(CancelFlagTest, whereAStopAndAFailureMeetTheStopWins)
{
    auto failOnceCancelled = [](Clock& clock) -> Task<void> {
        auto slept = co_await outcomeOf(clock.sleep(100s));
        throw FileError("while stopping");
    };
    world.start(stopAfter(1s));
    EXPECT_TRUE(isCancellation(world.run(outcomeOf(runUntilStopped(flag, failOnceCancelled(world.clock)))).failure));
}

} // namespace
} // namespace palvera
