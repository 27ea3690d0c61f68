#include "transfer/Board.h"

#include "support/Simulation.h"

#include "files/FileError.h"
#include "support/QtPrinting.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

struct BoardTest : testing::Test {
    ManualClock clock;

    std::shared_ptr<SendWatcher> inFlight(Board& board, int part, qint64 sent)
    {
        auto watcher = std::make_shared<SendWatcher>(clock);
        watcher->progressed(sent);
        board.watch(part, watcher);
        return watcher;
    }
};

TEST_F(BoardTest, countsAPartOnceWhetherInFlightOrSettled)
{
    Board board({2, 1}, {}, 10, 15);
    EXPECT_EQ(board.nextPart(), 1);
    inFlight(board, 1, 7);
    EXPECT_EQ(board.sent(), 7);
    board.settle(1, "a", 10);
    EXPECT_EQ(board.sent(), 10);
    EXPECT_EQ(board.done(), (ConfirmedParts{{1, "a"}}));
    EXPECT_EQ(board.nextPart(), 2);
    EXPECT_EQ(board.nextPart(), std::nullopt);
}

TEST_F(BoardTest, neverCountsMoreThanTheFileThoughAShortLastPartCountsWhole)
{
    Board board({1}, {{2, "b"}}, 10, 15);
    EXPECT_EQ(board.sent(), 10);
    inFlight(board, 1, 10);
    EXPECT_EQ(board.sent(), 15);
}

TEST_F(BoardTest, aPartGivenUpNoLongerCounts)
{
    Board board({1}, {}, 10, 10);
    inFlight(board, *board.nextPart(), 9);
    board.giveUp(1);
    EXPECT_EQ(board.sent(), 0);
}

TEST_F(BoardTest, remembersTheFirstFailure)
{
    Board board({1}, {}, 10, 10);
    board.noteFailure(std::make_exception_ptr(FileError("first")));
    board.noteFailure(std::make_exception_ptr(FileError("second")));
    EXPECT_EQ(describe(board.failure()), "first");
}

} // namespace
} // namespace palvera
