#pragma once

#include "async/Task.h"

#include <memory>
#include <stop_token>

namespace palvera {

/// The stop switch of one transfer: set by whoever shows the transfer, read by the engine that runs it. Any thread.
/// Once stopped it stays stopped.
class CancelFlag {
public:
    bool isStopped() const { return m_stop.stop_requested(); }
    /// Stops the transfer; a second call does nothing.
    void stop() { m_stop.request_stop(); }
    /// For a `std::stop_callback`, which then runs on the thread that stops.
    std::stop_token token() const { return m_stop.get_token(); }

private:
    std::stop_source m_stop;
};

/// Ends when `flag` is stopped, at once if it is already.
Task<void> untilStopped(std::shared_ptr<CancelFlag> flag);

/// Runs `operation` on the caller's executor, which must be serial, until it ends or `flag` is stopped. A stop cancels
/// it, waits for it to end and then throws a cancellation, whatever the operation made of it.
Task<void> runUntilStopped(std::shared_ptr<CancelFlag> flag, Task<void> operation);

} // namespace palvera
