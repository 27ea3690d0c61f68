#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>

namespace palvera {

/// An asynchronous operation. It starts when it is awaited and belongs to whoever awaits it; cancelling the awaiting
/// coroutine cancels it, and it then ends with a cancellation (see `isCancellation`).
template <class T>
using Task = boost::asio::awaitable<T>;

/// Where an operation runs.
using Executor = boost::asio::any_io_executor;

} // namespace palvera
