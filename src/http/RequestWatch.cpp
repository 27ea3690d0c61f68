#include "http/RequestWatch.h"

#include <algorithm>

namespace palvera {

using namespace std::chrono_literals;

RequestWatch::RequestWatch(std::chrono::milliseconds idleLimit, std::chrono::milliseconds totalLimit, Moment begun)
    : m_idleLimit(idleLimit), m_totalLimit(totalLimit), m_begun(begun), m_moved(begun)
{}

RequestWatch::Verdict RequestWatch::verdict(Moment now) const
{
    if (m_totalLimit > 0ms && now - m_begun >= m_totalLimit)
        return Verdict::timedOut;
    if (m_idleLimit > 0ms && now - m_moved >= m_idleLimit)
        return Verdict::idle;
    return Verdict::inTime;
}

RequestWatch::Moment RequestWatch::nextLook(Moment now) const
{
    // The stall watch of an upload wants to hear of a draining queue well within its 20 seconds.
    auto interval = m_idleLimit > 0ms ? std::clamp(m_idleLimit / 4, 10ms, 1000ms) : 1000ms;
    auto next = now + interval;
    if (m_idleLimit > 0ms)
        next = std::min(next, m_moved + m_idleLimit);
    if (m_totalLimit > 0ms)
        next = std::min(next, m_begun + m_totalLimit);
    return next;
}

} // namespace palvera
