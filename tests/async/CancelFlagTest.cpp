#include "async/CancelFlag.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

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
        throw Failure("gone");
        co_return;
    };
    EXPECT_EQ(describe(world.run(outcomeOf(runUntilStopped(flag, fail()))).failure), "gone");
}

TEST_F(CancelFlagTest, whereAStopAndAFailureMeetTheStopWins)
{
    auto failOnceCancelled = [](Clock& clock) -> Task<void> {
        auto slept = co_await outcomeOf(clock.sleep(100s));
        throw Failure("while stopping");
    };
    world.start(stopAfter(1s));
    EXPECT_TRUE(isCancellation(world.run(outcomeOf(runUntilStopped(flag, failOnceCancelled(world.clock)))).failure));
}

} // namespace
} // namespace palvera
