#include "async/RunOn.h"

#include <boost/asio/associated_cancellation_slot.hpp>
#include <boost/asio/associated_executor.hpp>
#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/execution/outstanding_work.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/prefer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <exception>
#include <memory>

namespace palvera {

namespace asio = boost::asio;

namespace {

/// Carries a cancellation from one executor to another. Touched on the target executor only.
struct CancellationLink {
    asio::cancellation_signal signal;
    bool ended = false;
};

struct StartOn {
    template <class Handler>
    void operator()(Handler handler, Executor target, Task<void> operation) const
    {
        auto link = std::make_shared<CancellationLink>();
        if (auto slot = asio::get_associated_cancellation_slot(handler); slot.is_connected()) {
            slot.assign([link, target](asio::cancellation_type type) {
                asio::post(target, [link, type] {
                    if (!link->ended)
                        link->signal.emit(type);
                });
            });
        }
        auto home =
            asio::prefer(asio::get_associated_executor(handler, target), asio::execution::outstanding_work.tracked);
        auto complete = [link, home = std::move(home),
                         handler = std::move(handler)](std::exception_ptr failure) mutable {
            link->ended = true;
            asio::dispatch(home, [handler = std::move(handler), failure]() mutable { std::move(handler)(failure); });
        };
        asio::co_spawn(target, std::move(operation),
                       asio::bind_cancellation_slot(link->signal.slot(), std::move(complete)));
    }
};

Task<void> call(std::function<void()> work)
{
    work();
    co_return;
}

} // namespace

Task<void> runOn(Executor target, Task<void> operation)
{
    co_await asio::async_initiate<const asio::use_awaitable_t<>&, void(std::exception_ptr)>(
        StartOn{}, asio::use_awaitable, std::move(target), std::move(operation));
}

Task<void> callOn(Executor target, std::function<void()> work)
{
    return runOn(std::move(target), call(std::move(work)));
}

} // namespace palvera
