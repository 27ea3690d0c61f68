#pragma once

#include "async/Task.h"

#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

namespace palvera {

/// Runs `operation` on `target` and resumes the caller on its own executor with the result or the failure.
///
/// `target` must be serial: a strand or the main thread. Cancelling the caller posts the cancellation to `target`, so
/// the operation still ends there, and only then does the caller resume. (A plain co_spawn with use_awaitable onto
/// another executor hands a raw pointer to the caller's cancellation signal over, which Boost 1.81 then uses after it
/// is gone.)
Task<void> runOn(Executor target, Task<void> operation);

namespace detail {

template <class T>
Task<void> keepResult(Task<T> operation, std::optional<T>& result)
{
    result = co_await std::move(operation);
}

} // namespace detail

/// The same for an operation with a result.
template <class T>
    requires(!std::is_void_v<T>)
Task<T> runOn(Executor target, Task<T> operation)
{
    std::optional<T> result;
    co_await runOn(std::move(target), detail::keepResult(std::move(operation), result));
    co_return *std::move(result);
}

/// Calls `work`, which may block, on `target` and resumes the caller on its own executor. Cancelling the caller waits
/// for it all the same.
Task<void> callOn(Executor target, std::function<void()> work);

} // namespace palvera
