#include "transfers/Item.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(TraceTest, mergesNeighboursWhenItIsFull)
{
    Trace trace;
    for (int i = 1; i <= 240; ++i)
        trace.add(i);
    EXPECT_EQ(trace.samples.size(), 240);
    trace.add(241);
    EXPECT_EQ(trace.samples.size(), 121);
    EXPECT_EQ(trace.samples.first(), 1.5);
    EXPECT_EQ(trace.samples[119], 239.5);
    EXPECT_EQ(trace.samples.last(), 241) << "it had no neighbour";
    trace.add(10);
    EXPECT_EQ(trace.samples.size(), 121) << "each stands for two readings";
    trace.add(20);
    EXPECT_EQ(trace.samples.last(), 15);
    for (int i = 0; i < 100'000; ++i) {
        trace.add(7);
        ASSERT_LE(trace.samples.size(), Trace::cap);
    }
    EXPECT_EQ(trace.every, 512);
    EXPECT_EQ(trace.samples.last(), 7);
}

TEST(ItemTest, keepsTheLastRateAndTakesOneReadingASecondFromTheSecondWindowOn)
{
    Item item{.target = TransferTarget::Bin{}, .state = Item::Running{}};
    const std::tuple<std::chrono::milliseconds, std::optional<double>, std::optional<double>, int> reports[] = {
        // when, what is reported, what is shown, readings
        {0ms, {}, {}, 0},      {600ms, 90.0, 90.0, 0}, {2000ms, {}, 90.0, 0},  {2599ms, 30.0, 30.0, 0},
        {2600ms, 5.0, 5.0, 1}, {3599ms, 6.0, 6.0, 1},  {3600ms, 7.0, 7.0, 2},  {4600ms, {}, 7.0, 2},
        {4700ms, 0.0, 0.0, 2}, {4800ms, {}, 0.0, 2},   {4900ms, 8.0, 8.0, 3},  {6899ms, {}, 8.0, 3},
        {8899ms, {}, {}, 3},   {9500ms, 9.0, 9.0, 3},  {10500ms, 9.0, 9.0, 3}, {11500ms, 9.0, 9.0, 4},
    };
    for (auto [at, reported, shown, samples] : reports) {
        item.apply(at.count(), 99000, reported, Clock::Moment(at));
        EXPECT_EQ(item.sent, at.count());
        EXPECT_EQ(item.rate, shown) << at.count();
        EXPECT_EQ(item.trace.samples.size(), samples) << at.count();
    }
    EXPECT_THAT(item.trace.samples, ElementsAre(5.0, 7.0, 8.0, 9.0));
    item.rate.reset(); // as for a retry
    item.apply(0, 99000, {}, Clock::Moment(11600ms));
    EXPECT_EQ(item.rate, std::nullopt);
}

TEST(ItemTest, thePaceIsSteadyWhereRatesJumpAndCountsNeitherTheFirstWindowNorWhatWasLost)
{
    Item item{.target = TransferTarget::Bin{}, .state = Item::Running{}};
    auto report = [&](std::chrono::milliseconds at, qint64 sent) {
        const double rate = at % 2000ms < 1000ms ? 1500 : 800;
        item.apply(sent, 900'000, at % 2000ms < 600ms ? std::nullopt : std::optional(rate), Clock::Moment(at));
        return item.pace;
    };
    constexpr qint64 burst = 50'000, lost = 9'000;
    for (auto at = 0ms; at <= 30s; at += 200ms) {
        const auto pace = report(at, at.count() + (at > 0ms ? burst : 0) - (at > 20s ? lost : 0));
        const bool isKnown = (at >= 3600ms && at <= 20s) || at >= 21'200ms;
        EXPECT_EQ(pace.has_value(), isKnown) << at.count();
        EXPECT_NEAR(pace.value_or(1000), 1000, 1e-6) << at.count();
    }
    item.apply(item.sent, 900'000, 0.0, Clock::Moment(30s));
    EXPECT_EQ(item.pace, std::nullopt);
}

TEST(ItemTest, isInFlightUntilItEndsAndAReportEndsARetryWaitAlone)
{
    const std::tuple<Item::State, bool, const char*> table[] = {
        {Item::Waiting{}, true, "waiting"}, {Item::Running{}, true, "running"},    {Item::Retrying{}, true, "running"},
        {Item::Paused{}, true, "paused"},   {Item::Failed{"no"}, false, "failed"}, {Item::Done{}, false, "done"},
        {Item::Stopped{}, false, "stopped"}};
    for (const auto& [state, inFlight, afterReport] : table) {
        Item item{.target = TransferTarget::Bin{}, .state = state};
        EXPECT_EQ(item.isInFlight(), inFlight) << afterReport;
        item.apply(1, 2, {}, {});
        EXPECT_EQ(nameOf(item.state), afterReport);
    }
}

TEST(TroubleTest, isSaidWithTheNumberOfTheNextTry)
{
    EXPECT_EQ(troubleText({"Storage answers 503.", 3}), "Storage answers 503. Third try.");
    for (int attempt : {0, 1, 9})
        EXPECT_EQ(troubleText({"No network.", attempt}), "No network.");
}

} // namespace
} // namespace palvera
