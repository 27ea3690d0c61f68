#pragma once

#include "async/Task.h"

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
#include <functional>
#include <memory>

namespace palvera {

namespace detail {

/// Carries a cancellation from one executor to another. Touched on the target executor only.
struct CancellationLink {
    boost::asio::cancellation_signal signal;
    bool ended = false;
};

template <class T>
struct CompletionSignature {
    using type = void(std::exception_ptr, T);
};
template <>
struct CompletionSignature<void> {
    using type = void(std::exception_ptr);
};

struct StartOn {
    template <class Handler, class T>
    void operator()(Handler handler, Executor target, Task<T> operation) const
    {
        namespace asio = boost::asio;
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
        auto complete = [link, home = std::move(home), handler = std::move(handler)](std::exception_ptr failure,
                                                                                     auto... result) mutable {
            link->ended = true;
            asio::dispatch(home, [handler = std::move(handler), failure, ... result = std::move(result)]() mutable {
                std::move(handler)(failure, std::move(result)...);
            });
        };
        asio::co_spawn(target, std::move(operation),
                       asio::bind_cancellation_slot(link->signal.slot(), std::move(complete)));
    }
};

} // namespace detail

/// Runs `operation` on `target` and resumes the caller on its own executor with the result or the failure.
///
/// `target` must be serial: a strand or the main thread. Cancelling the caller posts the cancellation to `target`, so
/// the operation still ends there, and only then does the caller resume. (A plain co_spawn with use_awaitable onto
/// another executor hands a raw pointer to the caller's cancellation signal over, which Boost 1.81 then uses after it
/// is gone.)
template <class T>
Task<T> runOn(Executor target, Task<T> operation)
{
    using Signature = typename detail::CompletionSignature<T>::type;
    co_return co_await boost::asio::async_initiate<const boost::asio::use_awaitable_t<>&, Signature>(
        detail::StartOn{}, boost::asio::use_awaitable, std::move(target), std::move(operation));
}

/// Calls `work`, which may block, on `target` and resumes the caller on its own executor. Cancelling the caller waits
/// for it all the same.
inline Task<void> callOn(Executor target, std::function<void()> work)
{
    auto call = [](std::function<void()> called) -> Task<void> {
        called();
        co_return;
    };
    co_await runOn(std::move(target), call(std::move(work)));
}

} // namespace palvera
