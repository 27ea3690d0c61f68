#include "async/TaskGroup.h"

#include "async/Failure.h"
#include "support/Simulation.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>

#include <gmock/gmock.h>

namespace palvera {

namespace {

using namespace std::chrono_literals;
namespace asio = boost::asio;

class TaskGroupTest : public testing::Test {
protected:
    /// Ends after `duration`, with a failure if so asked, and notes that it came to its end.
    Task<void> work(std::chrono::seconds duration, bool fails = false)
    {
        co_await m_world.clock.sleep(duration);
        if (fails)
            throw Failure(QStringLiteral("%1").arg(duration.count()));
        ++m_completed;
    }
    Task<int> number(std::chrono::seconds duration, int value)
    {
        co_await work(duration);
        co_return value;
    }
    std::vector<Task<void>> three()
    {
        std::vector<Task<void>> all;
        all.push_back(work(3s));
        all.push_back(work(1s, true));
        all.push_back(work(2s));
        return all;
    }

    Simulation m_world;
    int m_completed = 0;
};

TEST_F(TaskGroupTest, joinsAllInTheirOrderAndAFailureCancelsNobody)
{
    auto failures = m_world.run(joinAll(three()));
    ASSERT_EQ(failures.size(), 3u);
    EXPECT_EQ(failures[0], nullptr);
    EXPECT_EQ(describe(failures[1]), "1");
    EXPECT_EQ(failures[2], nullptr);
    EXPECT_EQ(m_completed, 2);
    EXPECT_EQ(m_world.clock.elapsed(), 3s) << "they ran side by side";
    EXPECT_TRUE(m_world.run(joinAll({})).empty());
}

TEST_F(TaskGroupTest, cancellingReachesEveryMemberAndWaitsForThem)
{
    asio::cancellation_signal stop;
    std::vector<std::exception_ptr> failures;
    bool ended = false;
    asio::co_spawn(m_world.executor(), joinAll(three()),
                   asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr, auto outcomes) {
                       failures = std::move(outcomes);
                       ended = true;
                   }));
    m_world.settle();
    stop.emit(asio::cancellation_type::terminal);
    m_world.settle();
    ASSERT_TRUE(ended);
    EXPECT_EQ(m_completed, 0);
    EXPECT_EQ(m_world.clock.elapsed(), 0s);
    EXPECT_TRUE(std::ranges::all_of(failures, isCancellation));
}

TEST_F(TaskGroupTest, givesHowTheFirstOfTwoEndedAndCancelsTheOther)
{
    auto byValue = m_world.run(firstOf(number(1s, 7), work(2s)));
    EXPECT_EQ(std::get<0>(byValue).value, 7);
    auto byFailure = m_world.run(firstOf(number(2s, 7), work(1s, true)));
    EXPECT_EQ(describe(std::get<1>(byFailure).failure), "1");
    EXPECT_EQ(m_completed, 1);
    EXPECT_EQ(m_world.clock.elapsed(), 2s);
}

} // namespace

} // namespace palvera
