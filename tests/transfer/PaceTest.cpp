#include "transfer/Pace.h"

#include <gtest/gtest.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;

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

TEST(PaceTest, anAttemptCrawlsWhenItsRestTakesLongerThanThreeOfItsKind)
{
    const std::tuple<qint64, double, double, bool> cases[] = {
        // of 1000 bytes, usually there in 10 s
        {900, 10, 10, true},  {900, 10, 9, false}, {900, 31, 10, false}, {900, 29, 10, true},
        {200, 10, 80, false}, {301, 10, 70, true}, {500, 0, 10, true},
    };
    for (const auto& [left, pace, age, expected] : cases)
        EXPECT_EQ(crawls(left, {.bytesPerSecond = pace, .age = age}, 1000, 100), expected) << left << " " << pace;
}

TEST(PaceTest, noAnswerIsOverdueWithinTenSeconds)
{
    EXPECT_FALSE(isOverdue(9s, 1000, 1000));
    EXPECT_TRUE(isOverdue(10s, 1000, 1000));
}

TEST(PaceTest, theMedianIsNoneWhereMostStandStill)
{
    EXPECT_EQ(medianPace({}), std::nullopt);
    EXPECT_EQ(medianPace({5}), 5);
    EXPECT_EQ(medianPace({9, 1, 5}), 5);
    EXPECT_EQ(medianPace({0, 0, 5}), std::nullopt);
}

} // namespace
} // namespace palvera
