#include "http/RequestWatch.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using Verdict = RequestWatch::Verdict;

constexpr RequestWatch::Moment begun{};

TEST(RequestWatchTest, countsTheIdleLimitFromTheLastMovementAndTheTotalOneFromTheStart)
{
    RequestWatch watch(60s, 200s, begun);
    EXPECT_EQ(watch.verdict(begun + 60s - 1ns), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 60s), Verdict::idle);
    watch.moved(begun + 50s);
    EXPECT_EQ(watch.verdict(begun + 109s), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 110s), Verdict::idle);
    watch.moved(begun + 199s);
    EXPECT_EQ(watch.verdict(begun + 199s), Verdict::inTime);
    EXPECT_EQ(watch.verdict(begun + 200s), Verdict::timedOut);
    EXPECT_EQ(RequestWatch(0s, 0s, begun).verdict(begun + 1000h), Verdict::inTime);
}

TEST(RequestWatchTest, looksEverySecondAtTheLatestAndJustInTimeForALimit)
{
    EXPECT_EQ(RequestWatch(0s, 0s, begun).nextLook(begun), begun + 1s);
    EXPECT_EQ(RequestWatch(60s, 0s, begun).nextLook(begun), begun + 1s);
    EXPECT_EQ(RequestWatch(60s, 0s, begun).nextLook(begun + 59'700ms), begun + 60s);
    EXPECT_EQ(RequestWatch(60s, 500ms, begun).nextLook(begun), begun + 500ms);
    EXPECT_EQ(RequestWatch(100ms, 0s, begun).nextLook(begun), begun + 25ms);
}

} // namespace
} // namespace palvera
