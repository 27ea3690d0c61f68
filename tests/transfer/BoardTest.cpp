#include "transfer/Board.h"

#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

struct BoardTest : testing::Test {
    ManualClock clock;

    void send(Board& board, int part, qint64 bytes)
    {
        auto watcher = std::make_shared<SendWatcher>(clock);
        watcher->progressed(bytes);
        board.watch(part, watcher);
    }
};

TEST_F(BoardTest, countsAPartOnceWhetherInFlightOrSettledAndNotWhenGivenUp)
{
    Board board({2, 1}, {}, 10, 15);
    EXPECT_EQ(board.nextPart(), 1);
    EXPECT_EQ(board.nextPart(), 2);
    EXPECT_EQ(board.nextPart(), std::nullopt);
    send(board, 1, 7);
    EXPECT_EQ(board.sent(), 7);
    board.settle(1, "a", 10);
    send(board, 2, 3);
    EXPECT_EQ(board.sent(), 13);
    board.giveUp(2);
    EXPECT_EQ(board.sent(), 10);
    EXPECT_EQ(board.done(), (ConfirmedParts{{1, "a"}}));
}

TEST_F(BoardTest, neverCountsMoreThanTheFileThoughAShortLastPartCountsWhole)
{
    Board board({1}, {{2, "b"}}, 10, 15);
    send(board, 1, 10);
    EXPECT_EQ(board.sent(), 15);
}

} // namespace
} // namespace palvera
