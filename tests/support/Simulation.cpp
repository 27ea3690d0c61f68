#include "support/Simulation.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace palvera {

namespace asio = boost::asio;

Task<void> ManualClock::sleepUntil(Moment moment)
{
    if (moment <= m_now)
        co_return;
    auto timer = std::make_shared<asio::steady_timer>(co_await asio::this_coro::executor, Moment::max());
    struct Bed { // leaves the list however the wait ends, also when the frame is dropped
        std::list<Sleeper>& all;
        std::list<Sleeper>::iterator mine;
        ~Bed() { all.erase(mine); }
    } bed{m_sleepers, m_sleepers.insert(m_sleepers.end(), Sleeper{.wake = moment, .timer = timer})};
    auto [interrupted] = co_await timer->async_wait(asio::as_tuple(asio::use_awaitable));
    if (!bed.mine->woken)
        throw boost::system::system_error(interrupted);
}

bool ManualClock::advanceToNextWake()
{
    auto next = Moment::max(); // for which nobody waits but for ever
    for (const auto& sleeper : m_sleepers)
        if (!sleeper.woken)
            next = std::min(next, sleeper.wake);
    if (next == Moment::max())
        return false;
    advanceTo(next);
    return true;
}

void ManualClock::advanceTo(Moment moment)
{
    m_now = std::max(m_now, moment);
    for (auto& sleeper : m_sleepers) {
        if (sleeper.woken || sleeper.wake > m_now)
            continue;
        sleeper.woken = true;
        sleeper.timer->cancel();
    }
}

void Simulation::start(Task<void> operation)
{
    asio::co_spawn(*m_io, std::move(operation), [this](std::exception_ptr failure) {
        if (failure && !m_failure)
            m_failure = failure;
    });
}

bool Simulation::step()
{
    m_io->restart();
    bool ran = m_io->poll_one() > 0;
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    return ran;
}

void Simulation::run(Task<void> operation)
{
    std::optional<std::exception_ptr> ended;
    boost::asio::co_spawn(*m_io, std::move(operation), [&](std::exception_ptr failure) { ended = failure; });
    runUntil([&] { return ended.has_value(); });
    if (*ended)
        std::rethrow_exception(*ended);
}

void Simulation::runUntil(const std::function<bool()>& reached)
{
    while (!reached())
        if (!step() && !clock.advanceToNextWake())
            throw std::runtime_error("everything waits and nothing will wake it");
}

void Simulation::settle()
{
    while (step()) {
    }
}

} // namespace palvera
