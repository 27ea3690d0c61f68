#pragma once

#include <boost/asio/thread_pool.hpp>

namespace palvera {

/// The threads on which the engines and the service client run, off the main thread. Made on first use and never
/// released, so an operation may still be under way when the process ends. Sixteen threads: eight lanes that block on
/// a slow disk leave eight for everything else. Serial work makes its own strand of it.
boost::asio::thread_pool& enginePool();

} // namespace palvera
