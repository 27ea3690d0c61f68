#pragma once

#include "async/Failure.h"
#include "async/Task.h"

#include <exception>
#include <optional>
#include <variant>
#include <vector>

namespace palvera {

/// How an operation ended: with a value, or with a failure.
template <class T>
struct Outcome {
    std::optional<T> value = {};
    std::exception_ptr failure = {};
};
template <>
struct Outcome<void> {
    std::exception_ptr failure = {};
};

/// Runs `operation` and gives its failure, a cancellation included, as a value.
template <class T>
Task<Outcome<T>> outcomeOf(Task<T> operation)
{
    Outcome<T> outcome;
    try {
        if constexpr (std::is_void_v<T>)
            co_await std::move(operation);
        else
            outcome.value = co_await std::move(operation);
    } catch (...) {
        outcome.failure = std::current_exception();
    }
    co_return outcome;
}

/// How `operation` ended; a cancellation passes through.
template <class T>
Task<Outcome<T>> answerOf(Task<T> operation)
{
    auto outcome = co_await outcomeOf(std::move(operation));
    if (isCancellation(outcome.failure))
        std::rethrow_exception(outcome.failure);
    co_return outcome;
}

namespace detail {

/// Runs both, which never fail, until the first has ended; cancels the other, waits for it and says which it was.
Task<int> race(Task<void> a, Task<void> b);

template <class T>
Task<void> keepOutcome(Task<T> operation, Outcome<T>& outcome)
{
    outcome = co_await outcomeOf(std::move(operation));
}

} // namespace detail

/// Runs both at once on the caller's executor, which must be serial, until the first has ended, with a value or a
/// failure; then cancels the other, waits for it and gives how the first one ended. Cancelling cancels both.
template <class A, class B>
Task<std::variant<Outcome<A>, Outcome<B>>> firstOf(Task<A> a, Task<B> b)
{
    Outcome<A> endOfA;
    Outcome<B> endOfB;
    std::variant<Outcome<A>, Outcome<B>> first;
    if (co_await detail::race(detail::keepOutcome(std::move(a), endOfA), detail::keepOutcome(std::move(b), endOfB)) ==
        0)
        first.template emplace<0>(std::move(endOfA));
    else
        first.template emplace<1>(std::move(endOfB));
    co_return first;
}

/// Runs all of `operations` at once on the caller's executor, which must be serial, and waits until every one has
/// ended; a failure cancels none of the others. Gives the failures in the order of `operations`, null for a success.
/// Cancelling cancels them all and still waits for them; the caller is then in a cancelled state.
Task<std::vector<std::exception_ptr>> joinAll(std::vector<Task<void>> operations);

} // namespace palvera
