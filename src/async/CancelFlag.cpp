#include "async/CancelFlag.h"

#include "async/Event.h"
#include "async/Failure.h"
#include "async/TaskGroup.h"

#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>

namespace palvera {

namespace asio = boost::asio;

Task<void> untilStopped(std::shared_ptr<CancelFlag> flag)
{
    auto executor = co_await asio::this_coro::executor;
    auto stopped = std::make_shared<Event>(executor);
    const std::stop_callback wake(flag->token(), [executor, event = std::weak_ptr(stopped)] {
        asio::post(executor, [event] {
            if (auto waiting = event.lock())
                waiting->set();
        });
    });
    if (!flag->isStopped())
        co_await stopped->wait();
}

Task<void> runUntilStopped(std::shared_ptr<CancelFlag> flag, Task<void> operation)
{
    auto first = co_await firstOf(std::move(operation), untilStopped(flag));
    if (flag->isStopped())
        throwCancelled();
    auto failure = std::visit([](const auto& outcome) { return outcome.failure; }, first);
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace palvera
