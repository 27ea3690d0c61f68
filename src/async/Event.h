#pragma once

#include "async/Task.h"

#include <boost/asio/steady_timer.hpp>

namespace palvera {

/// Lets coroutines of one serial executor wait for each other. Starts unset.
class Event {
public:
    explicit Event(const Executor& executor) : m_forEver(executor, boost::asio::steady_timer::time_point::max()) {}

    /// Wakes the waiter, or lets the next wait end at once.
    void set();
    /// Ends once the event is set, and unsets it. One waiter at a time. Cancelling leaves the event as it is.
    Task<void> wait();

private:
    boost::asio::steady_timer m_forEver;
    bool m_set = false;
};

} // namespace palvera
