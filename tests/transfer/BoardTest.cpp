#include "transfer/Board.h"
#include "TransferTest.h"
#include "transfer/Pace.h"
#include "transfer/ProgressReporter.h"
#include "transfer/TransferLog.h"

namespace palvera {
namespace {

struct BoardTest : testing::Test {
    ManualClock clock;

    /// A sending of that part that has begun and sent `bytes` so far.
    Board::Sending send(Board& board, int part, qint64 bytes, qint64 size = 10)
    {
        Board::Sending sending{.part = part, .bytes = size, .watcher = std::make_shared<SendWatcher>(clock)};
        sending.watcher->reset();
        sending.watcher->progressed(bytes, bytes);
        board.watch(sending);
        return sending;
    }
    static void end(Board& board, const Board::Sending& sending)
    {
        sending.watcher->rest();
        board.settle(sending, "tag");
    }
};

TEST_F(BoardTest, countsAPartOnceWhetherInFlightOrSettledAndNotWhenGivenUp)
{
    Board board({2, 1}, {}, 10, 15, 8);
    EXPECT_EQ(board.nextPart(), 1);
    EXPECT_EQ(board.nextPart(), 2);
    EXPECT_EQ(board.nextPart(), std::nullopt);
    auto first = send(board, 1, 7);
    EXPECT_EQ(board.sent(), 7);
    first.watcher->progressed(10, 8);
    EXPECT_EQ(board.sent(), 8) << "the rest fills the kernel's queue";
    board.settle(first, "a");
    send(board, 2, 3);
    EXPECT_EQ(board.sent(), 13);
    EXPECT_FALSE(board.finished()->isStopped());
    board.giveUp(2);
    EXPECT_EQ(board.sent(), 10);
    EXPECT_EQ(board.done(), (ConfirmedParts{{1, "a"}}));
    EXPECT_TRUE(board.finished()->isStopped());
    Board resumed({1}, {{2, "b"}}, 10, 15, 8); // whose short last part counts whole
    send(resumed, 1, 10);
    EXPECT_EQ(resumed.sent(), 15) << "never more than the file";
}

TEST_F(BoardTest, aPartThatCrawlsIsTakenOverTwiceAndSettledByItsLastSenderOnly)
{
    Board board({3, 2, 1}, {}, 1000, 3000, 8);
    auto quick = send(board, 1, 0, 1000);
    auto slow = send(board, 2, 0, 1000);
    clock.advance(10s);
    quick.watcher->progressed(1000, 0);
    slow.watcher->progressed(100, 0);
    slow.watcher->held();
    EXPECT_EQ(board.takeOver(), std::nullopt) << "a limit holds it up";
    clock.advance(1s);
    EXPECT_EQ(board.takeOver(), 2);
    EXPECT_EQ(board.takeOver(), std::nullopt) << "a body that is out may be confirmed at any moment";
    end(board, quick);
    EXPECT_TRUE(slow.cut->isStopped());
    end(board, slow);
    EXPECT_EQ(board.doneCount(), 1u) << "it came too late";
    for (bool again : {true, false}) {
        slow = send(board, 2, 0, 1000);
        clock.advance(12s);
        EXPECT_EQ(board.takeOver().has_value(), again);
    }
    end(board, slow);
    EXPECT_EQ(board.doneCount(), 2u);
}

TEST_F(BoardTest, aPartThatIsOutIsTakenOverWhenItsAnswerTakesLongerThanThreeParts)
{
    Board board({2, 1}, {}, 1000, 2000, 8);
    auto quick = send(board, 1, 0, 1000);
    auto silent = send(board, 2, 0, 1000);
    clock.advance(10s);
    quick.watcher->progressed(1000, 0);
    end(board, quick);
    silent.watcher->progressed(1000, 0);
    clock.advance(20s);
    silent.watcher->progressed(1000, 0); // it still drains
    clock.advance(10s);
    EXPECT_EQ(board.takeOver(), std::nullopt);
    clock.advance(1s);
    EXPECT_EQ(board.takeOver(), 2);
}

TEST_F(BoardTest, whereConnectionsBreakFewerAttemptsBeginUntilPartsGetThroughAgain)
{
    Board board({9, 8, 7, 6, 5, 4, 3, 2, 1}, {}, 10, 90, 4);
    auto beginAndEnd = [&](bool broken) {
        int begun = 0;
        while (board.mayBeginAttempt())
            ++begun;
        for (int i = 0; i < begun; ++i)
            board.attemptEnded(broken);
        return begun;
    };
    EXPECT_EQ(beginAndEnd(true), 4);
    EXPECT_EQ(beginAndEnd(true), 4) << "once may happen to anybody";
    EXPECT_EQ(beginAndEnd(true), 1);
    EXPECT_EQ(beginAndEnd(true), 1);
    auto settle = [&](int part, std::chrono::seconds taken) {
        auto sending = send(board, part, 10);
        clock.advance(taken);
        end(board, sending);
        return beginAndEnd(false);
    };
    EXPECT_EQ(settle(1, 1s), 2);
    EXPECT_EQ(settle(2, 1s), 2);
    EXPECT_EQ(settle(3, 1s), 4);
    EXPECT_EQ(settle(4, 61s), 3) << "a part that takes so long leaves room for the others";
}

TEST_F(BoardTest, saysWhyNothingMovesAndNothingWhileSomethingDoes)
{
    Board board({2, 1}, {}, 10, 20, 8);
    auto first = send(board, 1, 5);
    auto second = send(board, 2, 5);
    board.noteTrouble(1, {.reason = "503", .attempt = 2}, clock.now());
    EXPECT_EQ(board.trouble(clock.now()), std::nullopt);
    clock.advance(1s);
    board.noteTrouble(2, {.reason = "reset", .attempt = 3}, clock.now());
    EXPECT_EQ(board.trouble(clock.now()), (Trouble{"reset", 3})) << "the latest";
    second.watcher->reset();
    EXPECT_EQ(board.trouble(clock.now()), (Trouble{"reset", 3})) << "another attempt alone moves nothing";
    clock.advance(17s);
    EXPECT_EQ(board.trouble(clock.now()), (Trouble{"No answer from storage for 15 seconds.", 0}));
    for (auto* sending : {&first, &second})
        sending->watcher->rest();
    EXPECT_EQ(board.trouble(clock.now()), (Trouble{"reset", 3})) << "between attempts nobody has to answer";
    second.watcher->progressed(1, 0);
    EXPECT_EQ(board.trouble(clock.now()), std::nullopt);
    first.watcher->reset();
    clock.advance(17s);
    first.watcher->held();
    EXPECT_EQ(board.trouble(clock.now()), std::nullopt) << "a limit holds it up";
}

std::optional<double> rate(const std::optional<PaceMeter::Pace>& pace)
{
    return pace ? std::optional(pace->bytesPerSecond) : std::nullopt;
}

TEST(PaceTest, looksBackFiveToTenSeconds)
{
    PaceMeter meter;
    const Clock::Moment start{};
    EXPECT_EQ(rate(meter.pace(start, 0)), std::nullopt) << "before the attempt";
    meter.begin(start);
    EXPECT_EQ(rate(meter.pace(start + 900ms, 90)), std::nullopt);
    EXPECT_EQ(rate(meter.pace(start + 4s, 400)), 100);
    EXPECT_EQ(rate(meter.pace(start + 5s, 500)), 100);
    EXPECT_EQ(rate(meter.pace(start + 9s, 500)), 500 / 9.0);
    EXPECT_EQ(rate(meter.pace(start + 10s, 500)), 0) << "of the last five seconds";
    meter.end();
    EXPECT_EQ(rate(meter.pace(start + 11s, 500)), std::nullopt) << "after it";
}

TEST(PaceTest, tooSlowIsWhatTakesThreeTimesAsLongAsOthersUnlessMostStandStill)
{
    const std::tuple<qint64, double, double, bool> cases[] = {
        // of 1000 bytes, usually there in 10 s
        {900, 10, 10, true},  {900, 10, 9, false}, {900, 31, 10, false}, {900, 29, 10, true},
        {200, 10, 80, false}, {301, 10, 70, true}, {500, 0, 10, true},
    };
    for (const auto& [left, pace, age, expected] : cases)
        EXPECT_EQ(crawls(left, {.bytesPerSecond = pace, .age = age}, 1000, 100), expected) << left << " " << pace;
    EXPECT_FALSE(isOverdue(9s, 1000, 1000));
    EXPECT_TRUE(isOverdue(10s, 1000, 1000)) << "an answer that is out, at the earliest";
    EXPECT_EQ(medianPace({}), std::nullopt);
    EXPECT_EQ(medianPace({5}), 5);
    EXPECT_EQ(medianPace({9, 1, 5}), 5);
    EXPECT_EQ(medianPace({0, 0, 5}), std::nullopt);
}

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
