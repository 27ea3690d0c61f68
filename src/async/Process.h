#pragma once

#include "async/Task.h"

#include <boost/asio/signal_set.hpp>

#include <functional>

namespace palvera {

/// What a program asks of the system before anything else. Writes to what nobody reads, and beyond a limit on the size
/// of files, fail instead of ending the process; as many files may be open as the system allows, within reason; and
/// where memory or threads run out at a place that nobody thought of, the process ends with a sentence and status 1.
void prepareProcess();

/// Calls `end` at the first SIGINT, SIGTERM or SIGHUP, but for those that the process was started to ignore, as by
/// nohup. The next one ends the process.
class EndSignals {
public:
    EndSignals(const Executor& main, std::function<void()> end);

private:
    boost::asio::signal_set m_signals;
};

} // namespace palvera
