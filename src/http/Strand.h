#pragma once

#include "async/Task.h"

#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/strand.hpp>

#include <chrono>

namespace palvera {

/// Where all of one session happens, and its timers.
using Strand = boost::asio::strand<Executor>;
using StrandTimer = boost::asio::basic_waitable_timer<std::chrono::steady_clock,
                                                      boost::asio::wait_traits<std::chrono::steady_clock>, Strand>;

} // namespace palvera
