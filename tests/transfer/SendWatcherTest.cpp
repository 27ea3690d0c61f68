#include "transfer/SendWatcher.h"

#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

TEST(SendWatcherTest, noticesAStallBetweenTwentyAndTwentyTwoSecondsAfterTheLastMove)
{
    Simulation world;
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    world.start([](SendWatcher& moving, Clock& clock) -> Task<void> {
        for (int i = 0; i < 4; ++i) { // until 60 s; a count that stays while the connection drains is movement too
            co_await clock.sleep(15s);
            moving.progressed(50);
        }
    }(*watcher, world.clock));
    EXPECT_THROW(world.run(watchStall(watcher, 100, world.clock)), Stalled);
    EXPECT_EQ(world.clock.elapsed(), 82s);
}

} // namespace
} // namespace palvera
