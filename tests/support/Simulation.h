#pragma once

#include "async/Clock.h"
#include "async/RunOn.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <list>
#include <memory>
#include <optional>
#include <stdexcept>

namespace palvera {

/// A clock that stands still until a test, or a Simulation, moves it. One thread.
class ManualClock final : public Clock {
public:
    /// Virtual time starts here; the wall shows 2026-01-01 12:00:00 UTC.
    static constexpr WallTime wallStart{std::chrono::seconds{1'767'268'800}};

    Moment now() const override { return m_now; }
    WallTime wallNow() const override
    {
        return wallStart + std::chrono::duration_cast<WallTime::duration>(m_now - Moment{});
    }
    Task<void> sleepUntil(Moment moment) override;

    /// The time since the start.
    std::chrono::nanoseconds elapsed() const { return m_now - Moment{}; }
    /// Moves on by `duration`, waking every sleeper whose moment has come. They run when the executor does.
    void advance(std::chrono::nanoseconds duration) { advanceTo(m_now + duration); }
    /// Moves to the earliest wake-up and wakes it. False when nobody sleeps.
    bool advanceToNextWake();

private:
    struct Sleeper {
        Moment wake;
        std::shared_ptr<boost::asio::steady_timer> timer; // waits for ever; cancelled to wake
        bool woken = false;
    };

    void advanceTo(Moment moment);

    Moment m_now{};
    std::list<Sleeper> m_sleepers;
};

/// A world in which nothing takes time but waiting for the clock: operations run on one thread, and whenever all of
/// them wait the clock jumps to the next wake-up. An operation that would wait for ever fails the test at once.
class Simulation {
public:
    ManualClock clock;

    Executor executor() { return m_io->get_executor(); }

    /// Starts `operation` and returns at once; its failure, if any, comes out of the run in which it happens.
    void start(Task<void> operation);

    /// Runs until `operation` has ended and gives its result, or throws its failure.
    void run(Task<void> operation);
    template <class T>
        requires(!std::is_void_v<T>)
    T run(Task<T> operation)
    {
        std::optional<T> result;
        run(detail::keepResult(std::move(operation), result));
        return *std::move(result);
    }

    /// Runs until `reached` holds, looking after every step. Throws when everything waits for ever before that.
    void runUntil(const std::function<bool()>& reached);
    /// Runs all there is to run without moving the clock.
    void settle();
    /// Lets that time pass, and runs all there is to run then.
    void pass(std::chrono::nanoseconds time)
    {
        run(clock.sleep(time));
        settle();
    }
    /// Drops every operation where it stands, as the end of a process would. Nothing can run here after that.
    void kill() { m_io.reset(); }

private:
    bool step();

    std::unique_ptr<boost::asio::io_context> m_io = std::make_unique<boost::asio::io_context>(1);
    std::exception_ptr m_failure; // of an operation that was started and is not awaited
};

} // namespace palvera
