#include "async/TaskGroup.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/deferred.hpp>
#include <boost/asio/experimental/awaitable_operators.hpp>
#include <boost/asio/experimental/parallel_group.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

namespace asio = boost::asio;

Task<int> detail::race(Task<void> a, Task<void> b)
{
    using namespace asio::experimental::awaitable_operators;
    co_return int((co_await (std::move(a) || std::move(b))).index());
}

Task<std::vector<std::exception_ptr>> joinAll(std::vector<Task<void>> operations)
{
    if (operations.empty())
        co_return std::vector<std::exception_ptr>{};
    auto executor = co_await asio::this_coro::executor;
    auto start = [&](Task<void>& operation) { return asio::co_spawn(executor, std::move(operation), asio::deferred); };
    std::vector<decltype(start(operations.front()))> started;
    started.reserve(operations.size());
    for (auto& operation : operations)
        started.push_back(start(operation));
    auto [order, failures] = co_await asio::experimental::make_parallel_group(std::move(started))
                                 .async_wait(asio::experimental::wait_for_all(), asio::use_awaitable);
    co_return failures;
}

} // namespace palvera
