#include "transfer/ProgressReporter.h"
#include "TransferTest.h"

#include "transfer/TransferLog.h"

namespace palvera {
namespace {

using std::chrono::nanoseconds;

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

QString timeOf(const Clock& clock)
{
    return QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(clock.wallNow())).toString("HH:mm:ss");
}

TEST(TransferLogTest, appendsOneLineEachInDecimalUnitsAndFixedColumnsInAFolderMadeOnTheWay)
{
    QTemporaryDir folder;
    ManualClock clock;
    QString start = timeOf(clock);
    TransferLog first(folder.path(), "film.mov", clock);
    clock.advance(10s);
    TransferLog second(folder.path(), "evil\nname.mov", clock);
    first.part(17, 104'857'600, 6.3);
    first.part(10000, 5, 0);
    first.done(53'690'000'000);
    second.done(10);
    TransferLog("/proc/nowhere", "film.mov", clock).done(1); // where no folder can be made, nothing is said
    const QString now = timeOf(clock);
    EXPECT_THAT(QString::fromUtf8(readFile(folder.filePath("Logs/Palvera/transfers.log"))).split('\n'),
                ElementsAre("── " + start + " start film.mov", "── " + now + " start evil name.mov",
                            now + " part   17   104.9 MB     6.3 s   16.64 MB/s",
                            now + " part 10000     0.0 MB     0.0 s    0.00 MB/s",
                            now + " done  53.69 GB in 10 s  average 5369.00 MB/s",
                            now + " done  0.00 GB in 0 s  average 0.00 MB/s", ""));
}

} // namespace
} // namespace palvera
