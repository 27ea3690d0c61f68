#include "transfer/SendWatcher.h"

#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

struct StallTest : testing::Test {
    Simulation world;
    std::shared_ptr<SendWatcher> watcher = std::make_shared<SendWatcher>(world.clock);
};

TEST_F(StallTest, isNoticedBetweenTwentyAndTwentyTwoSecondsAfterTheLastMove)
{
    world.start([](SendWatcher& moving, Clock& clock) -> Task<void> {
        for (int i = 0; i < 4; ++i) { // until 60 s; a count that stays while the connection drains is movement too
            co_await clock.sleep(15s);
            moving.progressed(50);
        }
    }(*watcher, world.clock));
    EXPECT_THROW(world.run(watchStall(watcher, 100, world.clock)), Stalled);
    EXPECT_EQ(world.clock.elapsed(), 82s);
}

TEST_F(StallTest, aBodyThatIsOutMayWaitForItsAnswer)
{
    watcher->progressed(100);
    world.start(watchStall(watcher, 100, world.clock));
    EXPECT_NO_THROW(world.runUntil([&] { return world.clock.elapsed() > 120s; }));
}

} // namespace
} // namespace palvera
