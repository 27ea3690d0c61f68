#include "async/CancelFlag.h"

#include "async/Failure.h"
#include "async/TaskGroup.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;

struct CancelFlagTest : testing::Test {
    Simulation world;
    std::shared_ptr<CancelFlag> flag = std::make_shared<CancelFlag>();

    Task<void> work(std::chrono::seconds wait, const char* failure = nullptr)
    {
        auto slept = co_await outcomeOf(world.clock.sleep(wait));
        if (failure)
            throw Failure(failure);
        if (slept.failure)
            std::rethrow_exception(slept.failure);
    }
    Task<void> stopAfter(std::chrono::seconds wait)
    {
        co_await world.clock.sleep(wait);
        flag->stop();
    }
    std::exception_ptr endOf(Task<void> operation)
    {
        return world.run(outcomeOf(runUntilStopped(flag, std::move(operation)))).failure;
    }
};

TEST_F(CancelFlagTest, stopCutsTheOperationOffAtOnceWhateverItMakesOfThat)
{
    world.start(stopAfter(5s));
    EXPECT_TRUE(isCancellation(endOf(work(100s, "while stopping"))));
    EXPECT_EQ(world.clock.elapsed(), 5s);
    flag->stop();
    EXPECT_TRUE(isCancellation(endOf(work(100s)))) << "stopped beforehand";
    EXPECT_EQ(world.clock.elapsed(), 5s);
}

TEST_F(CancelFlagTest, withoutAStopTheOperationsOwnEndCounts)
{
    EXPECT_EQ(endOf(work(3s)), nullptr);
    EXPECT_EQ(describe(endOf(work(1s, "gone"))), "gone");
    EXPECT_EQ(world.clock.elapsed(), 4s);
}

} // namespace
} // namespace palvera
