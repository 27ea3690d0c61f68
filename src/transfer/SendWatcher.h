#pragma once

#include "async/Clock.h"
#include "async/Failure.h"
#include "transfer/Pace.h"

#include <memory>
#include <mutex>
#include <optional>

namespace palvera {

/// Counts the bytes of one part's body that have left, and those that have arrived, and notes when that last moved.
/// Written by the lane's session, read by the stall watch and the progress reporter: any thread.
class SendWatcher {
public:
    explicit SendWatcher(Clock& clock);

    struct State {
        qint64 sent = 0;         ///< handed to the network
        qint64 acknowledged = 0; ///< of these, what has come to the other machine
        Clock::Moment moved;
    };

    /// Starts over, at the beginning of each attempt of the part.
    void reset();
    /// `sent` bytes have left so far, of which the other machine has `acknowledged`. The same `sent` again means that
    /// bytes handed over earlier are still draining.
    void progressed(qint64 sent, qint64 acknowledged);
    /// A rate limit holds the part up: that nothing moves is no fault of its connection.
    void held();
    State state() const;
    /// How long the count has not grown. What was handed over may be draining all the while.
    std::chrono::nanoseconds standing() const;
    /// The attempt is over, for good or for bad.
    void rest();
    /// Of the present attempt, see PaceMeter; nothing between attempts.
    std::optional<PaceMeter::Pace> pace() const;
    /// Whether an attempt is under way.
    bool isUnderWay() const;
    /// How long the latest attempt that ended took.
    std::chrono::nanoseconds taken() const;

private:
    Clock& m_clock;
    mutable std::mutex m_lock;
    // Guarded by m_lock.
    State m_state;
    Clock::Moment m_grown;
    mutable PaceMeter m_pace;
    std::chrono::nanoseconds m_taken{0};
};

/// The connection of a part stopped moving while there were bytes to send.
class Stalled final : public Failure {
public:
    Stalled();
};

/// Throws Stalled once nothing has moved for 20 seconds while part of a body of `length` bytes remains to be sent; it
/// looks every 2 seconds. A body that is out waits for storage's answer, which the request's own time-out bounds. Runs
/// until it throws or is cancelled.
Task<void> watchStall(std::shared_ptr<SendWatcher> watcher, qint64 length, Clock& clock);

} // namespace palvera
