#include "transfer/SendWatcher.h"

namespace palvera {

using namespace std::chrono_literals;

SendWatcher::SendWatcher(Clock& clock) : m_clock(clock), m_state{.moved = clock.now()} {}

void SendWatcher::reset()
{
    progressed(0);
}

void SendWatcher::progressed(qint64 sent)
{
    std::lock_guard guard(m_lock);
    m_state = {.sent = sent, .moved = m_clock.now()};
}

SendWatcher::State SendWatcher::state() const
{
    std::lock_guard guard(m_lock);
    return m_state;
}

Stalled::Stalled() : Failure(QStringLiteral("The connection stopped moving for 20 seconds.")) {}

Task<void> watchStall(std::shared_ptr<SendWatcher> watcher, qint64 length, Clock& clock)
{
    constexpr auto lookEvery = 2s;
    constexpr auto limit = 20s;
    for (;;) {
        co_await clock.sleep(lookEvery);
        auto state = watcher->state();
        if (state.sent < length && clock.now() - state.moved > limit)
            throw Stalled();
    }
}

} // namespace palvera
