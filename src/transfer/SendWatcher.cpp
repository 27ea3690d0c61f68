#include "transfer/SendWatcher.h"

#include <QObject>

namespace palvera {

using namespace std::chrono_literals;

SendWatcher::SendWatcher(Clock& clock) : m_clock(clock), m_state{.moved = clock.now()}, m_grown(m_state.moved) {}

void SendWatcher::reset()
{
    std::lock_guard guard(m_lock);
    m_state = {.moved = m_clock.now()};
    m_grown = m_state.moved;
    m_pace.begin(m_state.moved);
}

void SendWatcher::rest()
{
    std::lock_guard guard(m_lock);
    if (const auto began = m_pace.began())
        m_taken = m_clock.now() - *began;
    m_pace.end();
}

void SendWatcher::progressed(qint64 sent, qint64 acknowledged)
{
    std::lock_guard guard(m_lock);
    const auto now = m_clock.now();
    if (sent > m_state.sent)
        m_grown = now;
    m_state = {.sent = sent, .acknowledged = acknowledged, .moved = now};
}

void SendWatcher::held()
{
    std::lock_guard guard(m_lock);
    m_state.moved = m_grown = m_clock.now();
    m_pace.restart(m_state.moved, m_state.sent);
}

SendWatcher::State SendWatcher::state() const
{
    std::lock_guard guard(m_lock);
    return m_state;
}

std::chrono::nanoseconds SendWatcher::standing() const
{
    std::lock_guard guard(m_lock);
    return m_clock.now() - m_grown;
}

std::optional<PaceMeter::Pace> SendWatcher::pace() const
{
    std::lock_guard guard(m_lock);
    return m_pace.pace(m_clock.now(), m_state.sent);
}

bool SendWatcher::isUnderWay() const
{
    std::lock_guard guard(m_lock);
    return m_pace.began().has_value();
}

std::chrono::nanoseconds SendWatcher::taken() const
{
    std::lock_guard guard(m_lock);
    return m_taken;
}

Stalled::Stalled() : Failure(QObject::tr("The connection stopped moving for 20 seconds.")) {}

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
