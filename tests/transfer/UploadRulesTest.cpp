#include "transfer/UploadRules.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr qint64 mebibyte = 1 << 20;
constexpr qint64 budget = 256 * mebibyte;

TEST(UploadRulesTest, partsCoverAFileExactlyOrNotAtAll)
{
    struct Case {
        qint64 partSize, partCount, byteSize;
        bool covers;
    };
    for (auto [partSize, partCount, byteSize, covers] : {
             Case{10, 3, 30, true}, Case{10, 3, 21, true}, Case{10, 3, 20, false}, // the last part would be empty
             Case{10, 3, 31, false}, Case{10, 1, 1, true}, Case{0, 1, 10, false}, Case{-10, -1, 10, false},
             Case{10, 0, 0, false}, Case{std::numeric_limits<qint64>::max(), 1, 10, true},
             Case{1, std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::max(),
                  false}, // no upload has so many
         })
        EXPECT_EQ(coversExactly(partSize, partCount, byteSize), covers)
            << partSize << " " << partCount << " " << byteSize;
}

TEST(UploadRulesTest, lastPartEndsWithTheFile)
{
    EXPECT_EQ(rangeOfPart(1, 10, 30), (ByteRange{0, 10}));
    EXPECT_EQ(rangeOfPart(3, 10, 30), (ByteRange{20, 10}));
    EXPECT_EQ(rangeOfPart(3, 10, 21), (ByteRange{20, 1}));
    EXPECT_EQ(rangeOfPart(9000, budget, 9000 * budget), (ByteRange{8999 * budget, budget})) << "beyond 32 bits";
}

TEST(UploadRulesTest, takesTheLowestUnconfirmedPartFirst)
{
    EXPECT_THAT(partsToSend(4, {{1, "a"}, {3, "c"}}), ElementsAre(4, 2));
    EXPECT_THAT(partsToSend(2, {{1, "a"}, {2, "b"}}), IsEmpty());
}

TEST(UploadRulesTest, isCompleteOnlyWithEveryPart)
{
    EXPECT_TRUE(isComplete({{1, "a"}, {2, "b"}}, 2));
    EXPECT_FALSE(isComplete({{1, "a"}}, 2));
    EXPECT_FALSE(isComplete({{1, "a"}, {3, "c"}}, 2));
    EXPECT_FALSE(isComplete({{2, "b"}, {3, "c"}}, 2));
    EXPECT_FALSE(isComplete({}, 0));
}

TEST(UploadRulesTest, lanesKeepWithinTheMemoryBudget)
{
    struct Case {
        qint64 partSize;
        std::size_t queued;
        int lanes;
    };
    for (auto [partSize, queued, lanes] : {
             Case{16 * mebibyte, 3, 3},
             Case{16 * mebibyte, 1000, 8},
             Case{32 * mebibyte, 1000, 8},
             Case{32 * mebibyte + 1, 1000, 7},
             Case{64 * mebibyte, 1000, 4},
             Case{100 * mebibyte, 1000, 2},
             Case{129 * mebibyte, 1000, 1},
             Case{300 * mebibyte, 1000, 1},
             Case{16 * mebibyte, 0, 1},
         })
        EXPECT_EQ(laneCount(8, budget, partSize, queued), lanes) << partSize << " " << queued;
}

TEST(UploadRulesTest, backsOffTwiceAsLongEachTimeUpToHalfAMinute)
{
    std::vector<std::chrono::nanoseconds> waits;
    for (int attempt = 1; attempt <= 7; ++attempt)
        waits.push_back(backOff(attempt, 1.0));
    EXPECT_THAT(waits, ElementsAre(1s, 2s, 4s, 8s, 16s, 30s, 30s));
    EXPECT_EQ(backOff(7, 1.2), 36s);
    EXPECT_EQ(backOff(1, 0.8), 800ms);
}

TEST(UploadRulesTest, quotesAreNotPartOfATag)
{
    EXPECT_EQ(unquoted("\"abc\""), "abc");
    EXPECT_EQ(unquoted("abc"), "abc");
}

} // namespace
} // namespace palvera
