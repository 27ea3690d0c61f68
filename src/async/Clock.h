#pragma once

#include "async/Task.h"

#include <chrono>

namespace palvera {

/// What time it is, and waiting for it. Everything that waits or measures takes one, so that tests run in virtual time.
/// Any thread.
class Clock {
public:
    using Moment = std::chrono::steady_clock::time_point;
    using WallTime = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;

    /// Monotonic: for durations and deadlines.
    virtual Moment now() const = 0;
    /// What the clock on the wall shows: for people and for other machines.
    virtual WallTime wallNow() const = 0;
    /// Ends at `moment`, at once when it has passed. Cancelling ends it with a cancellation.
    virtual Task<void> sleepUntil(Moment moment) = 0;

    Task<void> sleep(std::chrono::nanoseconds duration);
};

/// The machine's own clock.
class SystemClock final : public Clock {
public:
    Moment now() const override;
    WallTime wallNow() const override;
    Task<void> sleepUntil(Moment moment) override;
};

/// The seconds from `from` to `to`.
inline double secondsBetween(Clock::Moment from, Clock::Moment to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace palvera
