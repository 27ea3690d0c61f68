#include "async/Clock.h"

#include <boost/asio/steady_timer.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

Task<void> Clock::sleep(std::chrono::nanoseconds duration)
{
    co_await sleepUntil(now() + std::chrono::duration_cast<Moment::duration>(duration));
}

Clock::Moment SystemClock::now() const
{
    return std::chrono::steady_clock::now();
}

Clock::WallTime SystemClock::wallNow() const
{
    return std::chrono::system_clock::now();
}

Task<void> SystemClock::sleepUntil(Moment moment)
{
    boost::asio::steady_timer timer(co_await boost::asio::this_coro::executor, moment);
    co_await timer.async_wait(boost::asio::use_awaitable);
}

} // namespace palvera
