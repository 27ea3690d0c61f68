#pragma once

#include "platform/Task.h"

#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace palvera {

/// The stop switch of one transfer: set by whoever shows the transfer, read by the engine that runs it. Any thread.
/// Once stopped it stays stopped.
class CancelFlag {
public:
    bool isStopped() const;
    /// Stops the transfer and tells every listener; a second call does nothing.
    void stop();

private:
    friend Task<void> untilStopped(std::shared_ptr<CancelFlag> flag);
    using Listeners = std::list<std::function<void()>>;

    Listeners::iterator listen(std::function<void()> onStop);
    void unlisten(Listeners::iterator listener);

    mutable std::mutex m_lock;
    // Guarded by m_lock.
    bool m_stopped = false;
    Listeners m_listeners; // each only posts, and may be called once more after it was taken out
};

/// Ends when `flag` is stopped, at once if it is already.
Task<void> untilStopped(std::shared_ptr<CancelFlag> flag);

/// Runs `operation` on the caller's executor, which must be serial, until it ends or `flag` is stopped. A stop cancels
/// it, waits for it to end and then throws a cancellation, whatever the operation made of it.
Task<void> runUntilStopped(std::shared_ptr<CancelFlag> flag, Task<void> operation);

} // namespace palvera
