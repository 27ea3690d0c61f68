#include "transfer/UploadRules.h"

#include "support/QtPrinting.h"

namespace palvera {
namespace {

using namespace std::chrono_literals;

constexpr qint64 mebibyte = 1 << 20;
constexpr qint64 budget = 256 * mebibyte;
constexpr qint64 huge = std::numeric_limits<qint64>::max();

TEST(UploadRulesTest, partsCoverAFileExactlyOrNotAtAll)
{
    using Case = std::array<qint64, 3>; // the size of parts, their count, the size of the file
    for (auto [partSize, partCount, byteSize] : {Case{10, 3, 30}, {10, 3, 21}, {10, 1, 1}, {huge, 1, 10}})
        EXPECT_TRUE(coversExactly(partSize, partCount, byteSize)) << partSize << ' ' << partCount << ' ' << byteSize;
    const Case emptyLast{10, 3, 20}, tooMany{1, huge, huge};
    for (auto [partSize, partCount, byteSize] :
         {emptyLast, {10, 3, 31}, {0, 1, 10}, {-10, -1, 10}, {10, 0, 0}, tooMany})
        EXPECT_FALSE(coversExactly(partSize, partCount, byteSize)) << partSize << ' ' << partCount << ' ' << byteSize;
}

TEST(UploadRulesTest, lastPartEndsWithTheFile)
{
    EXPECT_EQ(rangeOfPart(3, 10, 30), (ByteRange{20, 10}));
    EXPECT_EQ(rangeOfPart(3, 10, 21), (ByteRange{20, 1}));
    EXPECT_EQ(rangeOfPart(9000, budget, 9000 * budget), (ByteRange{8999 * budget, budget})) << "beyond 32 bits";
}

TEST(UploadRulesTest, isCompleteOnlyWithEveryPart)
{
    EXPECT_TRUE(isComplete({{1, "a"}, {2, "b"}}, 2));
    for (const auto& done : {ConfirmedParts{{1, "a"}}, {{1, "a"}, {3, "c"}}, {{2, "b"}, {3, "c"}}})
        EXPECT_FALSE(isComplete(done, 2));
    EXPECT_FALSE(isComplete({}, 0));
}

TEST(UploadRulesTest, lanesKeepWithinTheMemoryBudget)
{
    const std::tuple<qint64, std::size_t, int> cases[] = {
        {16 * mebibyte, 3, 3},     {32 * mebibyte, 1000, 8},  {32 * mebibyte + 1, 1000, 7},
        {100 * mebibyte, 1000, 2}, {300 * mebibyte, 1000, 1}, {16 * mebibyte, 0, 1},
    };
    for (auto [partSize, queued, lanes] : cases)
        EXPECT_EQ(laneCount(8, budget, partSize, queued), lanes) << partSize << " " << queued;
}

TEST(UploadRulesTest, backsOffWithASpread)
{
    EXPECT_EQ(backOff(7, 1.2), 36s);
    EXPECT_EQ(backOff(1, 0.8), 800ms);
}

} // namespace
} // namespace palvera
