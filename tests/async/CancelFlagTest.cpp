#include "async/CancelFlag.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

/// Makes a failure of its own of whatever ends its sleep.
Task<void> sleepAndFail(Clock& clock)
{
    co_await outcomeOf(clock.sleep(100s));
    throw Failure("while stopping");
}

Task<void> stopAfterFive(Clock& clock, CancelFlag& flag)
{
    co_await clock.sleep(5s);
    flag.stop();
}

TEST(CancelFlagTest, stopCutsTheOperationOffAtOnceWhateverItMakesOfThat)
{
    Simulation world;
    auto flag = std::make_shared<CancelFlag>();
    world.start(stopAfterFive(world.clock, *flag));
    for (bool beforehand : {false, true}) {
        auto end = world.run(outcomeOf(runUntilStopped(flag, sleepAndFail(world.clock))));
        EXPECT_TRUE(isCancellation(end.failure)) << beforehand;
        EXPECT_EQ(world.clock.elapsed(), 5s) << beforehand;
    }
}

} // namespace
} // namespace palvera
