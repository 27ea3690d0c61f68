#include "platform/CancelFlag.h"

#include "platform/Failure.h"
#include "platform/TaskGroup.h"

#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

namespace asio = boost::asio;

bool CancelFlag::isStopped() const
{
    std::lock_guard guard(m_lock);
    return m_stopped;
}

void CancelFlag::stop()
{
    Listeners told;
    {
        std::lock_guard guard(m_lock);
        if (std::exchange(m_stopped, true))
            return;
        told = m_listeners;
    }
    for (const auto& onStop : told)
        onStop();
}

CancelFlag::Listeners::iterator CancelFlag::listen(std::function<void()> onStop)
{
    std::lock_guard guard(m_lock);
    return m_listeners.insert(m_listeners.end(), std::move(onStop));
}

void CancelFlag::unlisten(Listeners::iterator listener)
{
    std::lock_guard guard(m_lock);
    m_listeners.erase(listener);
}

Task<void> untilStopped(std::shared_ptr<CancelFlag> flag)
{
    auto executor = co_await asio::this_coro::executor;
    auto forEver = std::make_shared<asio::steady_timer>(executor, asio::steady_timer::time_point::max());
    auto wake = [executor, waiting = std::weak_ptr(forEver)] {
        asio::post(executor, [waiting] {
            if (auto timer = waiting.lock())
                timer->cancel();
        });
    };
    struct Listening {
        CancelFlag& flag;
        CancelFlag::Listeners::iterator listener;
        ~Listening() { flag.unlisten(listener); }
    } listening{*flag, flag->listen(wake)};
    if (flag->isStopped())
        co_return;
    try {
        co_await forEver->async_wait(asio::use_awaitable);
    } catch (...) {
        if (!flag->isStopped())
            throw;
    }
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
