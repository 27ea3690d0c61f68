#include "async/TaskGroup.h"

#include "async/CancelFlag.h"
#include "async/Failure.h"
#include "async/TaskScope.h"
#include "support/QtPrinting.h"
#include "support/Simulation.h"

#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>

#include <QScopeGuard>

#include <gmock/gmock.h>

namespace palvera {
namespace {

using namespace std::chrono_literals;
namespace asio = boost::asio;

struct TaskGroupTest : testing::Test {
    Simulation world;
    int completed = 0;

    /// Ends after `duration`, with a failure if so asked, and counts those that came to their end.
    Task<int> work(std::chrono::seconds duration, bool fails = false)
    {
        co_await world.clock.sleep(duration);
        if (fails)
            throw Failure("failed");
        co_return ++completed;
    }
    std::vector<Task<void>> three()
    {
        static const auto noResult = [](Task<int> task) -> Task<void> { co_await std::move(task); };
        std::vector<Task<void>> all;
        for (int seconds : {3, 1, 2})
            all.push_back(noResult(work(std::chrono::seconds(seconds), seconds == 1)));
        return all;
    }
};

TEST_F(TaskGroupTest, joinsAllInTheirOrderAndAFailureCancelsNobody)
{
    auto failures = world.run(joinAll(three()));
    ASSERT_EQ(failures.size(), 3u);
    EXPECT_EQ(describe(failures[1]), "failed");
    EXPECT_TRUE(!failures[0] && !failures[2]);
    EXPECT_EQ(completed, 2);
    EXPECT_EQ(world.clock.elapsed(), 3s) << "they ran side by side";
    EXPECT_TRUE(world.run(joinAll({})).empty());
}

TEST_F(TaskGroupTest, cancellingReachesEveryMemberAndWaitsForThem)
{
    asio::cancellation_signal stop;
    std::optional<std::vector<std::exception_ptr>> ended;
    asio::co_spawn(world.executor(), joinAll(three()),
                   asio::bind_cancellation_slot(stop.slot(), [&](std::exception_ptr, auto all) { ended = all; }));
    world.settle();
    stop.emit(asio::cancellation_type::terminal);
    world.settle();
    ASSERT_TRUE(ended && ended->size() == 3);
    EXPECT_EQ(completed, 0);
    EXPECT_EQ(world.clock.elapsed(), 0s);
    EXPECT_TRUE(std::ranges::all_of(*ended, isCancellation));
}

TEST_F(TaskGroupTest, givesHowTheFirstOfTwoEndedAndCancelsTheOther)
{
    const auto byValue = world.run(firstOf(work(1s), work(2s)));
    EXPECT_EQ(std::get<0>(byValue).value, 1);
    const auto byFailure = world.run(firstOf(work(2s), work(1s, true)));
    EXPECT_EQ(describe(std::get<1>(byFailure).failure), "failed");
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(world.clock.elapsed(), 2s);
}

/// Makes a failure of its own of whatever ends its sleep.
Task<void> sleepAndFail(Clock& clock)
{
    co_await outcomeOf(clock.sleep(100s));
    throw Failure("while stopping");
}

Task<void> stopAfterFive(Clock& clock, CancelFlag& flag)
{
    co_await clock.sleep(5s);
    flag.stop();
}

TEST(CancelFlagTest, stopCutsTheOperationOffAtOnceWhateverItMakesOfThat)
{
    Simulation world;
    auto flag = std::make_shared<CancelFlag>();
    world.start(stopAfterFive(world.clock, *flag));
    for (bool beforehand : {false, true}) {
        auto end = world.run(outcomeOf(runUntilStopped(flag, sleepAndFail(world.clock))));
        EXPECT_TRUE(isCancellation(end.failure)) << beforehand;
        EXPECT_EQ(world.clock.elapsed(), 5s) << beforehand;
    }
}

TEST_F(TaskGroupTest, aScopeThatClosesCutsOffWhatStartsMeanwhile)
{
    TaskScope scope(world.executor());
    const auto sleep = [](Clock& clock) -> Task<void> { co_await clock.sleep(1h); };
    const auto goOn = [](Clock& clock, const std::function<void()>& startAnother) -> Task<void> {
        const auto over = qScopeGuard(startAnother);
        co_await clock.sleep(1h);
    };
    const std::function<void()> startAnother = [&] { scope.start(sleep(world.clock)); };
    scope.start(goOn(world.clock, startAnother));
    world.settle();
    world.run(scope.close());
    EXPECT_EQ(world.clock.elapsed(), 0s);
}

TEST(FailureTest, isDescribedInWordsThatCanBeShown)
{
    const auto said = [](const auto& failure) { return describe(std::make_exception_ptr(failure)); };
    EXPECT_EQ(said(Failure("It is\r\nlate\x1b[0m.\n")), "It is \nlate[0m.");
    EXPECT_EQ(said(std::runtime_error("late")), "late");
    EXPECT_EQ(said(std::bad_alloc()), "There is not enough memory.");
    EXPECT_EQ(said(std::system_error(EAGAIN, std::generic_category())),
              "The system gives the program no more threads.");
    EXPECT_EQ(said(boost::system::system_error(EMFILE, boost::system::generic_category())),
              "The system lets the program open no more files.");
    for (const char* nothing : {"", " \n", "\u200b"})
        EXPECT_EQ(said(Failure(nothing)), "It did not work, and nobody said why.");
    EXPECT_EQ(said(7), "It did not work, and nobody said why.");
    EXPECT_EQ(said(Failure(QString(100'000, 'x'))).size(), 2000);
}

} // namespace
} // namespace palvera
