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

struct ProgressReporterTest : testing::Test {
    static constexpr qint64 total = 1000;

    Simulation world;
    Board board{{4, 3, 2, 1}, {}, 250, total, 8};
    std::vector<UploadProgress> seen;
    std::vector<std::pair<nanoseconds, std::size_t>> saves; // when, and how many parts
    std::vector<nanoseconds> reported;
    ProgressBody latest{};
    nanoseconds saveTakes{0};
    nanoseconds reportTakes{0};
    bool reportsFail = false;

    Task<void> save(ConfirmedParts done)
    {
        saves.emplace_back(world.clock.elapsed(), done.size());
        co_await world.clock.sleep(saveTakes);
    }

    Task<void> report(ProgressBody body)
    {
        reported.push_back(world.clock.elapsed());
        latest = body;
        co_await world.clock.sleep(reportTakes);
        if (reportsFail)
            throw TransportError(TransportError::Kind::broken, "lost");
    }

    void runFor(nanoseconds duration, bool toPlatform = true)
    {
        ProgressReporter reporter(
            world.executor(), world.clock, board, total, {.redrawEvery = 200ms, .reportEvery = 2s},
            [this](const UploadProgress& progress) { seen.push_back(progress); },
            [this](ConfirmedParts done) { return save(std::move(done)); },
            toPlatform ? ProgressReporter::Report([this](ProgressBody body) { return report(body); }) : nullptr);
        world.run(firstOf(reporter.run(), world.clock.sleep(duration)));
    }

    void settleAt(nanoseconds when, int part)
    {
        world.start([](Clock& clock, Board& settling, nanoseconds wait, int which) -> Task<void> {
            co_await clock.sleep(wait);
            settling.settle({.part = which, .bytes = 250, .watcher = std::make_shared<SendWatcher>(clock)}, "tag");
        }(world.clock, board, when, part));
    }
};

TEST_F(ProgressReporterTest, ratesAreAveragesOverWindowsThatRestartWithEachReport)
{
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    board.watch({.part = 1, .bytes = 250, .watcher = watcher});
    world.start([](ManualClock& clock, SendWatcher& sending) -> Task<void> {
        for (int i = 1; i <= 25; ++i) {
            co_await clock.sleep(100ms);
            sending.progressed(i * 10);
        }
    }(world.clock, *watcher));
    runFor(2700ms);

    std::string rates;
    for (const auto& progress : seen)
        rates += progress.bytesPerSecond ? 'r' : '-';
    EXPECT_EQ(rates, "--rrrrrrrr--r"); // windows from 0 and from 2 s, the first report at 0.2 s
    EXPECT_NEAR(*seen[9].bytesPerSecond, 100, 6);
    EXPECT_EQ(seen[9].total, total);
    EXPECT_THAT(reported, ElementsAre(2s));
    const ProgressBody due{.bytesSent = seen[9].sent, .bytesTotal = total, .bytesPerSecond = seen[9].bytesPerSecond};
    EXPECT_EQ(latest, due);
    seen.clear();
    runFor(2500ms, false);
    EXPECT_TRUE(seen[9].bytesPerSecond) << "without a platform to tell the windows are the same";
    EXPECT_FALSE(seen[10].bytesPerSecond);
}

TEST_F(ProgressReporterTest, neitherASlowDiskNorASlowPlatformThatRefusesDelaysAnythingElse)
{
    saveTakes = 3s;
    reportTakes = 5s;
    reportsFail = true;
    settleAt(210ms, 1);
    settleAt(390ms, 2);
    settleAt(1s, 3);
    settleAt(2s, 4);
    runFor(9100ms);
    EXPECT_EQ(seen.size(), 45u) << "ticks go on every 0.2 s";
    EXPECT_THAT(saves, ElementsAre(std::pair(nanoseconds(400ms), 2u), std::pair(nanoseconds(3400ms), 4u)));
    EXPECT_THAT(reported, ElementsAre(2s, 9s)) << "two seconds after the answer, which took five";
}

} // namespace
} // namespace palvera
