#include "transfer/ProgressReporter.h"

#include "async/TaskGroup.h"
#include "http/TransportError.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using testing::ElementsAre;

Task<void> settleFour(Clock& clock, Board& board)
{
    for (auto [moment, part] : {std::pair(210ms, 1), {390ms, 2}, {1000ms, 3}, {2000ms, 4}}) {
        co_await clock.sleepUntil(Clock::Moment(moment));
        board.settle({.part = part, .bytes = 250, .watcher = std::make_shared<SendWatcher>(clock)}, "tag");
    }
    co_await clock.sleepUntil(Clock::Moment(9100ms));
}

Task<void> refuseAfter(Clock& clock, nanoseconds duration)
{
    co_await clock.sleep(duration);
    throw TransportError(TransportError::Kind::broken, "lost");
}

TEST(ProgressReporterTest, neitherASlowDiskNorASlowPlatformThatRefusesDelaysAnythingElse)
{
    Simulation world;
    Board board{{4, 3, 2, 1}, {}, 250, 1000, 8};
    int ticks = 0;
    std::vector<std::pair<nanoseconds, std::size_t>> saves; // when, and how many parts
    std::vector<nanoseconds> reports;
    const auto save = [&](const ConfirmedParts& done) {
        saves.emplace_back(world.clock.elapsed(), done.size());
        return world.clock.sleep(3s);
    };
    const auto report = [&](ProgressBody) {
        reports.push_back(world.clock.elapsed());
        return refuseAfter(world.clock, 5s);
    };
    ProgressReporter reporter(
        world.executor(), world.clock, board, 1000, {.redrawEvery = 200ms, .reportEvery = 2s},
        [&](const UploadProgress&) { ++ticks; }, save, report);
    world.run(firstOf(reporter.run(), settleFour(world.clock, board)));
    EXPECT_EQ(ticks, 45) << "they go on every 0.2 s";
    EXPECT_THAT(saves, ElementsAre(std::pair(nanoseconds(400ms), 2u), std::pair(nanoseconds(3400ms), 4u)));
    EXPECT_THAT(reports, ElementsAre(2s, 9s)) << "two seconds after the answer, which took five";
}

} // namespace
} // namespace palvera
