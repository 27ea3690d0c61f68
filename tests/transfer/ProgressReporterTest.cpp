#include "transfer/ProgressReporter.h"

#include "async/TaskGroup.h"
#include "support/Simulation.h"

#include "http/TransportError.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

struct ProgressReporterTest : testing::Test {
    static constexpr qint64 total = 1000;

    Simulation world;
    Board board{{4, 3, 2, 1}, {}, 250, total};
    std::vector<UploadProgress> seen;
    std::vector<std::pair<std::chrono::nanoseconds, std::size_t>> saves; // when, and how many parts
    std::vector<std::pair<std::chrono::nanoseconds, ProgressBody>> reports;
    std::chrono::nanoseconds saveTakes{0};
    std::chrono::nanoseconds reportTakes{0};
    bool reportsFail = false;

    Task<void> save(ConfirmedParts done)
    {
        saves.emplace_back(world.clock.elapsed(), done.size());
        co_await world.clock.sleep(saveTakes);
    }

    Task<void> report(ProgressBody body)
    {
        reports.emplace_back(world.clock.elapsed(), body);
        co_await world.clock.sleep(reportTakes);
        if (reportsFail)
            throw TransportError(TransportError::Kind::broken, "lost");
    }

    ProgressReporter reporter(bool toPlatform = true)
    {
        return ProgressReporter(
            world.executor(), world.clock, board, total, {.redrawEvery = 200ms, .reportEvery = 2s},
            [this](const UploadProgress& progress) { seen.push_back(progress); },
            [this](ConfirmedParts done) { return save(std::move(done)); },
            toPlatform ? ProgressReporter::Report([this](ProgressBody body) { return report(body); }) : nullptr);
    }

    /// Runs the reporter for `duration` beside `meanwhile`, then cancels it.
    void runFor(ProgressReporter& subject, std::chrono::nanoseconds duration)
    {
        world.run(firstOf(subject.run(), world.clock.sleep(duration)));
    }

    Task<void> settleAt(std::chrono::nanoseconds when, int part)
    {
        co_await world.clock.sleep(when);
        board.settle(part, "tag", 250);
    }
};

TEST_F(ProgressReporterTest, ratesAreAveragesOverWindowsThatRestartWithEachReport)
{
    auto watcher = std::make_shared<SendWatcher>(world.clock);
    board.watch(1, watcher);
    watcher->progressed(0);
    auto subject = reporter();
    world.start([](ManualClock& clock, SendWatcher& sending) -> Task<void> {
        for (int i = 1; i <= 25; ++i) {
            co_await clock.sleep(100ms);
            sending.progressed(i * 10);
        }
    }(world.clock, *watcher));
    runFor(subject, 2700ms);

    std::vector<bool> withRate;
    for (const auto& progress : seen)
        withRate.push_back(progress.bytesPerSecond.has_value());
    EXPECT_THAT(withRate, ElementsAre(false, false, true, true, true, true, true, true, true, true, // 0.2 to 2.0 s
                                      false, false, true));                                         // 2.2 to 2.6 s
    EXPECT_NEAR(*seen[9].bytesPerSecond, 100, 6);
    EXPECT_EQ(seen[9].total, total);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].first, 2s);
    EXPECT_EQ(reports[0].second.bytesSent, seen[9].sent);
    EXPECT_EQ(reports[0].second.bytesPerSecond, seen[9].bytesPerSecond);
    EXPECT_EQ(reports[0].second.status, std::nullopt);
}

TEST_F(ProgressReporterTest, savesOncePerTickAndOnlyWhenPartsWereConfirmed)
{
    auto subject = reporter();
    world.start(settleAt(210ms, 1));
    world.start(settleAt(390ms, 2));
    world.start(settleAt(900ms, 3));
    runFor(subject, 3s);
    EXPECT_THAT(saves, ElementsAre(std::pair(std::chrono::nanoseconds(400ms), 2u),
                                   std::pair(std::chrono::nanoseconds(1s), 3u)));
}

TEST_F(ProgressReporterTest, aSlowDiskDelaysOnlyItsOwnSaves)
{
    saveTakes = 5s;
    auto subject = reporter();
    world.start(settleAt(100ms, 1));
    world.start(settleAt(1s, 2));
    world.start(settleAt(2s, 3));
    runFor(subject, 6100ms);
    EXPECT_EQ(seen.size(), 30u) << "ticks go on every 0.2 s";
    EXPECT_THAT(saves, ElementsAre(std::pair(std::chrono::nanoseconds(200ms), 1u),
                                   std::pair(std::chrono::nanoseconds(5200ms), 3u)));
}

TEST_F(ProgressReporterTest, aSlowPlatformDelaysNeitherTicksNorSavesAndHearsOneReportAtATime)
{
    reportTakes = 5s;
    auto subject = reporter();
    world.start(settleAt(3s, 1));
    runFor(subject, 9100ms);
    EXPECT_EQ(seen.size(), 45u);
    EXPECT_EQ(saves.size(), 1u);
    std::vector<std::chrono::nanoseconds> when;
    for (const auto& [moment, body] : reports)
        when.push_back(moment);
    EXPECT_THAT(when, ElementsAre(2s, 8s)) << "the reports due at 4 and 6 s fall away";
}

TEST_F(ProgressReporterTest, aPlatformThatRefusesReportsIsIgnored)
{
    reportsFail = true;
    auto subject = reporter();
    runFor(subject, 7s);
    EXPECT_EQ(reports.size(), 3u);
}

TEST_F(ProgressReporterTest, withoutAPlatformTheRateWindowStillRestarts)
{
    auto subject = reporter(false);
    runFor(subject, 2500ms);
    EXPECT_TRUE(reports.empty());
    EXPECT_TRUE(seen[9].bytesPerSecond.has_value());
    EXPECT_FALSE(seen[10].bytesPerSecond.has_value());
}

} // namespace
} // namespace palvera
