#include "transfer/SendWatcher.h"

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

} // namespace
} // namespace palvera
