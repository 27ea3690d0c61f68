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
    EXPECT_EQ(trace.every, 1);
    trace.add(241);
    EXPECT_EQ(trace.samples.size(), 121);
    EXPECT_EQ(trace.every, 2);
    EXPECT_EQ(trace.samples.first(), 1.5);
    EXPECT_EQ(trace.samples[119], 239.5);
    EXPECT_EQ(trace.samples.last(), 241) << "it had no neighbour";

    trace.add(10);
    EXPECT_EQ(trace.samples.size(), 121);
    EXPECT_EQ(trace.carried, 1);
    trace.add(20);
    EXPECT_EQ(trace.samples.size(), 122);
    EXPECT_EQ(trace.samples.last(), 15);
    EXPECT_EQ(trace.carry, 0);
    EXPECT_EQ(trace.carried, 0);
}

TEST(TraceTest, neverGrowsHoweverLongItRuns)
{
    Trace trace;
    for (int i = 0; i < 100'000; ++i) {
        trace.add(7);
        ASSERT_LE(trace.samples.size(), Trace::cap);
    }
    EXPECT_EQ(trace.every, 512);
    EXPECT_THAT(trace.samples, testing::Each(7.0));
}

Item itemOf(Item::State state)
{
    return {.target = TransferTarget::Bin{.orgId = "org", .folder = {}}, .name = "a.mov", .state = std::move(state)};
}

TEST(ItemTest, takesOneReadingASecondAndNoneWithoutSpeed)
{
    struct Report {
        std::chrono::milliseconds at;
        std::optional<double> rate;
        int samples;
    };
    auto item = itemOf(Item::Running{});
    for (auto [at, rate, samples] : std::vector<Report>{{0ms, {}, 0},
                                                        {100ms, 0.0, 0},
                                                        {200ms, -1.0, 0},
                                                        {300ms, 5.0, 1},
                                                        {700ms, 6.0, 1},
                                                        {1299ms, 7.0, 1},
                                                        {1300ms, 8.0, 2},
                                                        {1400ms, {}, 2}}) {
        item.apply(at.count(), 9000, rate, Clock::Moment(at));
        EXPECT_EQ(item.sent, at.count());
        EXPECT_EQ(item.rate, rate);
        EXPECT_EQ(item.trace.samples.size(), samples) << at.count();
    }
    EXPECT_EQ(item.total, 9000);
    EXPECT_EQ(item.lastSample, Clock::Moment(1300ms)) << "a report without speed left it";
    EXPECT_THAT(item.trace.samples, ElementsAre(5.0, 8.0));
}

TEST(ItemTest, aReportEndsARetryWaitAndNothingElse)
{
    for (const Item::State& state : std::initializer_list<Item::State>{
             Item::Waiting{}, Item::Running{}, Item::Failed{"no"}, Item::Done{}, Item::Stopped{}}) {
        auto item = itemOf(state);
        item.apply(1, 2, {}, {});
        EXPECT_EQ(item.state, state);
    }
    auto item = itemOf(Item::Retrying{.message = "no", .until = {}});
    item.apply(1, 2, {}, {});
    EXPECT_EQ(item.state, Item::State(Item::Running{}));
}

TEST(ItemTest, isInFlightWhileItWaitsRunsOrIsTriedAgain)
{
    const std::vector<std::pair<Item::State, bool>> table{{Item::Waiting{}, true},  {Item::Running{}, true},
                                                          {Item::Retrying{}, true}, {Item::Failed{"no"}, false},
                                                          {Item::Done{}, false},    {Item::Stopped{}, false}};
    for (const auto& [state, inFlight] : table)
        EXPECT_EQ(itemOf(state).isInFlight(), inFlight) << nameOf(state).toStdString();
}

} // namespace
} // namespace palvera
