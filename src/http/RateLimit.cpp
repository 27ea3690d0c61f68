#include "http/RateLimit.h"

#include <algorithm>
#include <limits>

namespace palvera {

using namespace std::chrono_literals;

namespace {

/// Tokens of so long are kept where nobody was in time to take them: timers are late by milliseconds, which are many
/// bytes.
constexpr auto longestLag = 100ms;
/// What one turn is good for: little enough that a request among fifty has its next one soon.
constexpr std::chrono::milliseconds turn{20};
constexpr qint64 leastBytes = 4 << 10;
constexpr qint64 mostBytes = 256 << 10;

RateLimit::Moment::duration timeFor(qint64 bytes, qint64 bytesPerSecond)
{
    return std::chrono::duration_cast<RateLimit::Moment::duration>(
        std::chrono::duration<double>(double(bytes) / double(bytesPerSecond)));
}

} // namespace

void RateLimit::set(qint64 bytesPerSecond)
{
    std::lock_guard guard(m_lock);
    if (m_rate.exchange(bytesPerSecond) == bytesPerSecond)
        return;
    m_next = {};
    ++m_changes;
}

std::optional<qint64> RateLimit::turnSize() const
{
    const qint64 rate = m_rate;
    if (rate == 0)
        return {};
    return std::clamp(rate * turn.count() / 1000, leastBytes, mostBytes);
}

RateLimit::Grant RateLimit::reserve(qint64 overdrawn, Moment now)
{
    std::lock_guard guard(m_lock);
    const auto bytes = overdrawn + turnSize().value_or(mostBytes);
    const auto due = std::max(m_next, now - longestLag);
    if (m_rate != 0)
        m_next = due + timeFor(bytes, m_rate);
    return {.bytes = bytes, .due = due};
}

void RateLimit::giveBack(qint64 bytes)
{
    std::lock_guard guard(m_lock);
    if (m_rate != 0)
        m_next -= timeFor(bytes, m_rate);
}

RateLimit::Turn::~Turn()
{
    const auto left = m_left + (m_due ? m_reserved : 0);
    if (m_limit && left != 0 && m_changes == m_limit->m_changes)
        m_limit->giveBack(left);
}

qint64 RateLimit::Turn::allowed(Moment now)
{
    if (!m_limit || m_limit->m_rate == 0)
        return std::numeric_limits<qint64>::max();
    if (m_changes != m_limit->m_changes) {
        m_changes = m_limit->m_changes;
        m_left = 0;
        m_due.reset();
    }
    if (m_left > 0)
        return m_left;
    if (!m_due) {
        const auto grant = m_limit->reserve(-m_left, now);
        m_reserved = grant.bytes;
        m_due = grant.due;
    }
    if (now < *m_due)
        return 0;
    m_due.reset();
    m_left += m_reserved;
    return m_left;
}

void RateLimit::Turn::spend(qint64 bytes)
{
    if (m_limit && m_limit->m_rate != 0)
        m_left -= bytes;
}

} // namespace palvera
