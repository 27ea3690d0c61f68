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

TEST(ItemTest, takesOneReadingASecondAndNoneWithoutSpeed)
{
    Item item{.target = TransferTarget::Bin{}, .state = Item::Running{}};
    const std::tuple<std::chrono::milliseconds, std::optional<double>, int> reports[] = {
        {0ms, {}, 0},    {100ms, 0.0, 0},  {200ms, -1.0, 0}, {300ms, 5.0, 1},
        {700ms, 6.0, 1}, {1299ms, 7.0, 1}, {1300ms, 8.0, 2}, {1400ms, {}, 2}};
    for (auto [at, rate, samples] : reports) {
        item.apply(at.count(), 9000, rate, Clock::Moment(at));
        EXPECT_EQ(item.sent, at.count());
        EXPECT_EQ(item.rate, rate);
        EXPECT_EQ(item.trace.samples.size(), samples) << at.count();
    }
    EXPECT_EQ(item.lastSample, Clock::Moment(1300ms)) << "a report without speed left it";
    EXPECT_THAT(item.trace.samples, ElementsAre(5.0, 8.0));
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
