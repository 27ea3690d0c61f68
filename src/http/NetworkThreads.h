#pragma once

#include "async/WorkerThreads.h"

#include <atomic>
#include <deque>

namespace palvera {

/// Threads for sessions that move bulk, each session always on the same one.
///
/// A session whose strand wanders between the threads of a pool finds its buffers in another core's cache, takes fresh
/// memory for every part from another thread's share of the heap, and needs a second thread woken for every wait:
/// measured, a quarter to a third more CPU under TLS, and a tenth more without.
class NetworkThreads {
public:
    /// With as many threads as sessions move bulk at a time, a session whose body comes from a slow disk holds up no
    /// other. Makes as many as the system gives; throws a std::runtime_error when that is none.
    explicit NetworkThreads(std::size_t count = 16);

    /// The thread for the next session, in turn; it is serial. Any thread. Sessions must end before this object does.
    Executor next();

private:
    std::deque<WorkerThreads> m_threads; // of one thread each
    std::atomic<std::size_t> m_next = 0;
};

} // namespace palvera
